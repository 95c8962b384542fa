"""What writing the model costs on top of the import."""

from inputs import model, size
from programs import import_of
from report import Goal, Section, table
from timing import in_turns

FORMATS = ("none", "json", "tree")
TIME_BOUND = 2.0
MEMORY_BOUND = 1.0  # megabytes, whatever the size of the model: buffers, and no more


def runs_of(megabytes, rounds):
    path = model("plain", megabytes)
    return in_turns({output: import_of(path, output) for output in FORMATS}, rounds)


def both_outputs(runs):
    """The time of an import with both outputs, times that of an import alone."""
    return (runs["json"].cpu + runs["tree"].cpu - runs["none"].cpu) / runs["none"].cpu


def memory_of_output(runs):
    """The megabytes that an output takes, the bigger of the two."""
    return (max(runs[output].peak for output in FORMATS) - runs["none"].peak) / 1e6


def section(megabytes, rounds):
    rows = []
    goals = []
    runs = {}
    for one in (megabytes // 4, megabytes):
        runs = runs_of(one, rounds)
        length = size(model("plain", one))
        rows += [
            [f"{output}, {one} MB", f"{run.cpu * 1000 / length:.2f}", f"{run.peak / 1e6:.1f} MB", f"{run.spread:.1%}"]
            for output, run in runs.items()
        ]
        goals.append(
            Goal(f"memory that an output of the {one} MB takes", memory_of_output(runs), MEMORY_BOUND, is_most=True,
                 unit=" MB")
        )
    goals.insert(
        0, Goal("import with JSON and outline, times the import alone", both_outputs(runs), TIME_BOUND, is_most=True)
    )
    return Section(
        "Output",
        [
            "`petal import -q` of ordinary models without an output, and with each of the two.",
            table(["format", "ms/MB", "memory", "spread"], rows),
        ],
        goals,
        rounds,
    )
