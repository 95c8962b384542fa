"""The whole import, beside flex that only recognises the keywords of the same file."""

from inputs import matches_per_megabyte, model, real_files, size
from programs import import_of, program
from realmodel import repeated_model
from report import Goal, Section, table
from timing import in_turns, ratio

SHAPES = ("plain", "sparse", "dense")
GOAL = 1


def runs_of(path, rounds):
    return in_turns({"petal": import_of(path), "flex": [program("scan-bench"), "--only", "1", str(path)]}, rounds)


def gain(megabytes, rounds):
    """How many times as fast as flex the import of an ordinary model is."""
    runs = runs_of(model("plain", megabytes), rounds)
    return ratio(runs["flex"], runs["petal"])


def texts(megabytes):
    """What is imported, by what it is."""
    found = {shape: model(shape, megabytes) for shape in SHAPES}
    largest = max((path for path in real_files() if path.suffix == ".mdl"), key=size, default=None)
    if largest:
        found["the largest real model, with the start of both"] = largest
        repeated = repeated_model(largest, megabytes)
        if repeated:
            found["its logical view over and over"] = repeated
    return found


def densities():
    """How alike the ordinary model and the real ones are to the scanner."""
    made = f"The ordinary model has {matches_per_megabyte(model('plain', 4))}"
    real = real_files()
    return f"{made}; all real models together have {matches_per_megabyte(*real)}." if real else f"{made}."


def section(megabytes, rounds):
    rows = []
    goals = []
    for name, path in texts(megabytes).items():
        runs = runs_of(path, rounds)
        faster = ratio(runs["flex"], runs["petal"])
        rows.append(
            [name, f"{size(path):.1f}"]
            + [f"{runs[one].cpu * 1000 / size(path):.2f}" for one in ("petal", "flex")]
            + [f"{faster:.2f}", f"{max(one.spread for one in runs.values()):.1%}"]
        )
        if name not in SHAPES:
            goals.append(Goal(f"import of {name}, times as fast as flex -Cf", faster, GOAL))
        elif name == "plain":
            goals.append(Goal("import of an ordinary model, times as fast as flex -Cf", faster, GOAL))
    heads = ["model", "MB", "petal import, ms/MB", "flex -Cf, ms/MB", "import is faster by", "spread"]
    return Section(
        "The whole import",
        [
            "`petal import -q --format none`, types for C++, which is the import and nothing else, beside the scanner"
            " that flex makes, which counts the keywords of the same file and builds nothing. Processor time. "
            + densities(),
            table(heads, rows),
        ],
        goals,
        rounds,
    )
