"""What the summary of what came through costs, which petal gives unless told to be quiet."""

from inputs import model, size
from programs import import_of, summed_up_import_of
from report import Section, table
from timing import in_turns, ratio

QUIET, SUMMED_UP = "import", "import with the summary"


def runs_of(megabytes, rounds):
    path = model("plain", megabytes)
    return in_turns({QUIET: import_of(path), SUMMED_UP: summed_up_import_of(path)}, rounds)


def cost(runs):
    """The time with the summary, times that without."""
    return ratio(runs[SUMMED_UP], runs[QUIET])


def section(megabytes, rounds):
    runs = runs_of(megabytes, rounds)
    length = size(model("plain", megabytes))
    rows = [
        [name, f"{one.cpu * 1000 / length:.2f}", f"{one.peak / 1e6:.1f} MB", f"{one.spread:.1%}"]
        for name, one in runs.items()
    ]
    return Section(
        "What the summary costs",
        [
            "Unless told to be quiet, petal says in three lines what of the file was imported, changed and dropped; for"
            f" that it reads the file once more. An ordinary model of {megabytes} MB.",
            table(["", "ms/MB", "memory", "spread"], rows),
            f"With the summary an import takes {cost(runs):.2f} times the time.",
        ],
        rounds=rounds,
    )
