"""Whether time and memory grow in step with the input: ordinary models of 1 MB to 1 GB."""

from inputs import model, size
from programs import import_of
from report import Goal, Section, table
from timing import in_turns

SIZES = (1, 4, 16, 64, 256, 1024)
SMALL = 4
KEPT = 64  # bigger models are deleted once measured
TIME_GROWTH = 1.3
MEMORY_SHARE = 2.5


def measured(megabytes, rounds):
    """The megabytes, the milliseconds for each, and the bytes held for each byte of the file; the spread."""
    path = model("plain", megabytes)
    runs = in_turns({"petal": import_of(path)}, rounds)["petal"]
    length = size(path)
    if megabytes > KEPT:
        path.unlink()
    return length, runs.cpu * 1000 / length, runs.peak / length / 1e6, runs.spread


def section(largest, rounds):
    levels = [one for one in SIZES if one <= largest]
    figures = {one: measured(one, rounds if one <= KEPT else max(1, rounds // 2)) for one in levels}
    rows = [
        [f"{length:.1f} MB", f"{time:.2f}", f"{share * length:.1f} MB", f"{share:.2f}", f"{spread:.1%}"]
        for length, time, share, spread in figures.values()
    ]
    big = levels[-1]
    return Section(
        "From 1 MB to 1 GB",
        [
            "`petal import --format none` of ordinary models: processor time, and the most memory held. What an import"
            " takes whatever the size (see below) shows in the first rows.",
            table(["model", "ms/MB", "memory", "memory / file", "spread"], rows),
        ],
        [
            Goal(f"time a MB at {big} MB, times that at {SMALL} MB", figures[big][1] / figures[SMALL][1], TIME_GROWTH,
                 is_most=True),
            Goal(f"memory at {big} MB, times the file", figures[big][2], MEMORY_SHARE, is_most=True),
        ],
    )
