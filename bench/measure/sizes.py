"""Whether time and memory grow in step with the input: ordinary models of 1 MB to 1 GB."""

from inputs import SIZES, model, remove, size
from programs import import_of
from report import Goal, Section, table
from timing import in_turns

SMALL = SIZES[1]
KEPT = 64  # bigger models are deleted once measured
TIME_GROWTH = 1.3
MEMORY_SHARE = 2.5


def measured(megabytes, rounds):
    """The megabytes, the milliseconds for each, and the bytes held for each byte of the file; the spread."""
    path = model("plain", megabytes)
    runs = in_turns({"petal": import_of(path)}, rounds)["petal"]
    length = size(path)
    if megabytes > KEPT:
        remove(path)
    return length, runs.cpu * 1000 / length, runs.peak / length / 1e6, runs.spread


def fewer(rounds):
    """For what takes long."""
    return max(1, rounds // 2)


def section(largest, rounds):
    levels = [one for one in SIZES if one <= largest]
    figures = {one: measured(one, rounds if one <= KEPT else fewer(rounds)) for one in levels}
    rows = [
        [f"{length:.1f} MB", f"{time:.2f}", f"{share * length:.1f} MB", f"{share:.2f}", f"{spread:.1%}"]
        for length, time, share, spread in figures.values()
    ]
    big = levels[-1]
    return Section(
        "From 1 MB to 1 GB",
        [
            "`petal import -q --format none` of ordinary models: processor time, and the most memory held. What an"
            f" import takes whatever the size (see below) shows in the first rows. Models of more than {KEPT} MB were"
            f" imported {fewer(rounds)} times.",
            table(["model", "ms/MB", "memory", "memory / file", "spread"], rows),
        ],
        [
            Goal(f"time a MB at {big} MB, times that at {SMALL} MB", figures[big][1] / figures[SMALL][1], TIME_GROWTH,
                 is_most=True),
            Goal(f"memory at {big} MB, times the file", figures[big][2], MEMORY_SHARE, is_most=True),
        ],
        rounds,
    )
