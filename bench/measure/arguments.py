"""What bench/run can be told. Run by itself it checks that and does no more."""

import argparse
import os
from pathlib import Path

from inputs import SIZES, found_models
from programs import ROOT
from sections import SECTIONS


def within(kind, low, high):
    def check(text):
        try:
            value = kind(text)
        except ValueError:
            value = None
        if value is None or not low <= value <= high:
            raise argparse.ArgumentTypeError(f"'{text}' is not a number from {low} to {high}")
        return value

    return check


def one_of(numbers):
    def check(text):
        if text not in map(str, numbers):
            raise argparse.ArgumentTypeError(f"'{text}' is none of {', '.join(map(str, numbers))}")
        return int(text)

    return check


def names_of(known):
    def check(text):
        names = text.split(",")
        if not set(names) <= set(known):
            raise argparse.ArgumentTypeError(f"'{text}' is not of {', '.join(known)}")
        return names

    return check


def writable(text):
    path = Path(text)
    if path.is_dir() or not os.access(path if path.exists() else path.parent, os.W_OK):
        raise argparse.ArgumentTypeError(f"'{text}' cannot be written")
    return text


def executable(text):
    if not os.path.isfile(text) or not os.access(text, os.X_OK):
        raise argparse.ArgumentTypeError(f"'{text}' is no program")
    return os.path.abspath(text)


class Parser(argparse.ArgumentParser):
    """Whose errors are one line."""

    def error(self, message):
        self.exit(2, f"{self.prog}: {message}\n")


# Of a whole measurement: how it is checked, what it is unless given, and its help.
WHOLE = {
    "rounds": (within(int, 1, 1000), 7, "how often everything runs"),
    "scanned": (within(int, 1, 4096), 128, "megabytes for the scanner"),
    "imported": (within(int, 4, 4096), 64, "megabytes for imports"),
    "largest": (one_of(SIZES[1:]), SIZES[-1], "megabytes of the largest model"),
    "portion": (within(float, 1e-5, 1), 1, "the share of the hard shapes' counts that is measured"),
    "archived": (within(int, 10, 100_000), 2000, "models of each archive"),
    "before": (executable, None, "another petal, such as one of an earlier state, to compare with"),
    "only": (names_of(SECTIONS), None, f"only renew these sections of the file, with commas: {', '.join(SECTIONS)}"),
    "output": (writable, ROOT / "docs" / "performance.md", "the file that is written"),
}


def parser():
    made = Parser(
        prog="bench/run",
        allow_abbrev=False,
        description="Measures petal beside its rivals and writes docs/performance.md. Real models are measured, too,"
        " when PETAL_REAL_MODELS names a folder of them.",
    )
    quick = made.add_mutually_exclusive_group()
    quick.add_argument("--quick", action="store_true", help="only compare ratios with the floors on record")
    quick.add_argument(
        "--record", action="store_true", help="measure as --quick does, and put the ratios, less a margin, on record"
    )
    whole = made.add_argument_group("a whole measurement, not with --quick and --record")
    for name, (check, usual, meaning) in WHOLE.items():
        told = usual.relative_to(ROOT) if isinstance(usual, Path) else usual
        whole.add_argument(f"--{name}", type=check, help=meaning if told is None else f"{meaning} [{told}]")
    return made


def arguments():
    """The arguments of this program, all good. Ends it with an error of one line otherwise."""
    made = parser()
    asked = made.parse_args()
    for name, (_, usual, _) in WHOLE.items():
        if getattr(asked, name) is None:
            setattr(asked, name, usual)
        elif asked.quick or asked.record:
            made.error(f"--{name} has no effect with --quick or --record")
    try:
        found_models()
    except ValueError as error:
        made.error(str(error))
    return asked


if __name__ == "__main__":
    arguments()
