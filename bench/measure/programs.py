"""Where everything is."""

import shutil
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD = ROOT / "build"
DATA = BUILD / "bench-data"


def program(name):
    """The path of a program that is built here."""
    return str(BUILD / "bin" / name)


def has(tool):
    """Whether a tool is there, one of the system's or one that is built here."""
    return shutil.which(tool) is not None or Path(program(tool)).exists()


def import_of(path, output="none"):
    """The import and nothing else: for its summary petal would read the file once more."""
    return [program("petal"), "import", "-q", str(path), "--format", output]


def summed_up_import_of(path, output="none"):
    """The same with the summary that petal gives by default."""
    return [program("petal"), "import", str(path), "--format", output]
