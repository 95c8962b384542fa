"""What the summary of what came through costs, which petal gives unless told to be quiet, and what a ledger costs."""

from inputs import model, real_files, size
from programs import import_of, ledger_import_of, summed_up_import_of
from realmodel import repeated_model
from report import Section, table
from timing import in_turns, ratio

QUIET, SUMMED_UP, LEDGER, ALL = "import", "import with the summary", "import with a ledger", "with a line per property"


def runs_of(path, rounds, with_ledger=True):
    commands = {QUIET: import_of(path), SUMMED_UP: summed_up_import_of(path)}
    if with_ledger:
        commands |= {LEDGER: ledger_import_of(path), ALL: ledger_import_of(path, "all")}
    return in_turns(commands, rounds)


def cost(runs, name=SUMMED_UP):
    """The time with the summary or a ledger, times that without."""
    return ratio(runs[name], runs[QUIET])


def texts(megabytes):
    """What is imported, by what it is."""
    found = {"an ordinary model": model("plain", megabytes)}
    largest = max((path for path in real_files() if path.suffix == ".mdl"), key=size, default=None)
    repeated = largest and repeated_model(largest, megabytes)
    return found | ({"the logical view of the largest real model over and over": repeated} if repeated else {})


def part(path, rounds):
    """The rows for one model."""
    runs = runs_of(path, rounds)
    return [
        [
            name,
            f"{one.cpu * 1000 / size(path):.2f}",
            f"{cost(runs, name):.2f}",
            f"{one.peak / 1e6:.1f} MB",
            f"{one.spread:.1%}",
        ]
        for name, one in runs.items()
    ]


def section(megabytes, rounds):
    parts = []
    for name, path in texts(megabytes).items():
        rows = part(path, rounds)
        parts.append(table([name, "ms/MB", "times the import", "memory", "spread"], rows))
    return Section(
        "What the summary and a ledger cost",
        [
            "Unless told to be quiet, petal says in three lines what of the file was imported, changed and dropped; for"
            " that it reads the file once more. A ledger tells it object by object, and if asked property by property;"
            f" here it goes to /dev/null. Models of {megabytes} MB.",
            *parts,
        ],
        rounds=rounds,
    )
