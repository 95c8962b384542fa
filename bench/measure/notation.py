"""How fast the notation is read, which the ledger and `petal info` do."""

from inputs import made_texts, size
from programs import program
from report import Section, table
from timing import in_turns, ratio

READER, LINES = "reader", "newlines"


def runs_of(text, rounds):
    return in_turns({READER: [program("read-notation"), str(text)], LINES: [program("count-lines"), str(text)]}, rounds)


def against_lines(text, rounds):
    """The time to look for newlines alone, as a share of the time to read the notation."""
    runs = runs_of(text, rounds)
    return ratio(runs[LINES], runs[READER])


def section(megabytes, rounds):
    rows = []
    for shape, text in made_texts(megabytes).items():
        runs = runs_of(text, rounds)
        rows.append(
            [shape]
            + [f"{size(text) / runs[name].cpu:.0f}" for name in (READER, LINES)]
            + [f"{runs[READER].spread:.1%}"]
        )
    return Section(
        "The reader of the notation",
        [
            f"A program that reads the notation of made models of {megabytes} MB to the end and counts the events,"
            " and one that only looks for newlines.",
            table(["model", "notation, MB/s", "newlines in 8 KiB reads, MB/s", "spread"], rows),
        ],
        rounds=rounds,
    )
