"""The whole import, beside flex that only recognises the keywords of the same file."""

from inputs import model, size
from programs import import_of, program
from report import Goal, Section, table
from timing import in_turns, ratio

SHAPES = ("plain", "sparse", "dense")


def runs_of(shape, megabytes, rounds):
    path = model(shape, megabytes)
    return in_turns({"petal": import_of(path), "flex": [program("scan-bench"), "--only", "1", str(path)]}, rounds)


def gain(megabytes, rounds):
    """How many times as fast as flex the import of an ordinary model is."""
    runs = runs_of("plain", megabytes, rounds)
    return ratio(runs["flex"], runs["petal"])


def section(megabytes, rounds):
    rows = []
    goals = []
    for shape in SHAPES:
        runs = runs_of(shape, megabytes, rounds)
        faster = ratio(runs["flex"], runs["petal"])
        megabytes_read = size(model(shape, megabytes))
        rows.append(
            [shape]
            + [f"{runs[name].cpu * 1000 / megabytes_read:.2f}" for name in ("petal", "flex")]
            + [f"{faster:.2f}", f"{max(one.spread for one in runs.values()):.1%}"]
        )
        if shape == "plain":
            goals.append(Goal("import of an ordinary model, times as fast as flex -Cf", faster, 1))
    heads = ["model", "petal import, ms/MB", "flex -Cf, ms/MB", "import is faster by", "spread"]
    return Section(
        "The whole import",
        [
            "`petal import --format none`, types for C++, beside the scanner that flex makes, which counts the keywords"
            f" of the same file and builds nothing. Processor time of models of {megabytes} MB.",
            table(heads, rows),
        ],
        goals,
    )
