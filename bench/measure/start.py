"""What an import of a small file takes, and of what that consists."""

import os
import re
import subprocess
from collections import Counter
from pathlib import Path

from inputs import model, real_files
from programs import DATA, has, import_of, summed_up_import_of
from report import Goal, Section, table
from timing import in_turns

WANTED_SIZE = 30_000
OURS = ("petal", "libkel", "libKel")
LEAST_CLASSES = 8  # of a made model: a package of them
LIBRARIES = 8  # of most instructions
LEAST_SHARE = 0.03  # of all instructions, for a function to be told of
EMPTY, QUIET, USUAL = "empty process", "petal import -q --format none", "petal import, JSON to nowhere"
BOUND = 15.0  # milliseconds, on a machine on which an empty process takes one


def small_model():
    """The real model file nearest to 30 KB, or a made one."""
    real = [path for path in real_files() if path.suffix == ".mdl"]
    return min(real, key=lambda path: abs(path.stat().st_size - WANTED_SIZE), default=None) or made_model()


def made_model():
    return model("plain", count=LEAST_CLASSES)


def runs_of(path, rounds):
    return in_turns({EMPTY: ["true"], QUIET: import_of(path), USUAL: summed_up_import_of(path, "json")}, rounds)


def against_empty(runs, command):
    """The milliseconds of an import where an empty process takes one, both undisturbed by other programs."""
    return runs[command].best_clock / runs[EMPTY].best_clock


def loading(command):
    """What the dynamic loader tells of its work, as rows."""
    told = subprocess.run(command, env={**os.environ, "LD_DEBUG": "statistics"}, capture_output=True, text=True,
                          check=True).stderr
    wanted = ("total startup time in dynamic loader", "time needed for relocation", "time needed to load objects",
              "number of relocations", "number of relocations from cache", "number of relative relocations")
    found = re.findall(r"\d+:[ \t]+([a-z ]+):[ \t]+(.*)", told)
    return [[name, value] for name, value in found if name in wanted]


def calls(command):
    """How often each call of the system was made, the commonest first."""
    traced = DATA / "calls.txt"
    subprocess.run(["strace", "-f", "-o", str(traced), *command], check=True, stdout=subprocess.DEVNULL)
    names = re.findall(r"^\d+\s+(\w+)\(", traced.read_text(errors="replace"), re.MULTILINE)
    return Counter(names).most_common()


def functions_told(text):
    """The functions that callgrind_annotate lists. Where it leaves out the library, the code was put into the function
    from another source file: the library is then that of the function."""
    pattern = r"^[ \t]*([\d,]+) \([^)\n]*\)[ \t]+[^:\n]*:(.*?)(?: \[(.*)\])?$"
    lines = re.findall(pattern, text, re.MULTILINE)
    libraries = {name: library for _, name, library in lines if library}
    return [
        (
            int(number.replace(",", "")),
            name.replace("(anonymous namespace)::", "").split("(")[0],
            Path(libraries.get(name, "???")).name,
        )
        for number, name, _ in lines
    ]


def functions(profile, *options):
    """The instructions of each function, the most first, with its name and its library."""
    annotate = ["callgrind_annotate", "--threshold=100", "--auto=no", *options, str(profile)]
    return functions_told(subprocess.run(annotate, capture_output=True, text=True, check=True).stdout)


def instructions(command):
    """The instructions of each library, and of our busiest functions with all that they call; in millions."""
    profile = DATA / "callgrind.out"
    counting = ["valgrind", "--tool=callgrind", f"--callgrind-out-file={profile}", *command]
    subprocess.run(counting, check=True, capture_output=True)
    by_library = Counter()
    for number, _, library in functions(profile):
        by_library[library] += number
    least = sum(by_library.values()) * LEAST_SHARE
    return (
        [[library, f"{number / 1e6:.2f}"] for library, number in by_library.most_common(LIBRARIES)],
        [
            [name, f"{number / 1e6:.2f}"]
            for number, name, library in functions(profile, "--inclusive=yes")
            if library.startswith(OURS) and number > least and name
        ],
    )


def section(rounds):
    path = small_model()
    runs = runs_of(path, rounds)
    command = import_of(path)
    rows = [
        [name, f"{run.best_clock * 1000:.2f}", f"{run.cpu * 1000:.2f}", f"{run.peak / 1e6:.1f} MB"]
        for name, run in runs.items()
    ]
    found = Section(
        "A small file",
        [
            f"Imports of a model of {path.stat().st_size / 1000:.0f} KB, from start to end: the import alone, and as usual,"
            " with the model as JSON and the summary.",
            table(["", "ms on the clock, best run", "ms of the processor", "memory"], rows),
            "What the dynamic loader tells of its part in the import alone (`LD_DEBUG=statistics`):",
            table(["loading", ""], loading(command)),
        ],
        [
            Goal(f"{name}, where an empty process takes 1 ms", against_empty(runs, name), BOUND, is_most=True, unit=" ms")
            for name in (QUIET, USUAL)
        ],
        rounds,
    )
    if has("strace"):
        made = calls(command)
        found.paragraphs.append(
            f"{sum(number for _, number in made)} calls of the system: "
            + ", ".join(f"{name} {number}" for name, number in made[:8])
            + ", and others."
        )
    if has("valgrind"):
        libraries, busiest = instructions(command)
        found.paragraphs += [
            "Instructions by library, and by function of ours with all that it calls (callgrind):",
            table(["library", "millions"], libraries),
            table(["function", "millions"], busiest),
        ]
    return found
