"""What people run, each beside the command that it is measured against, and beside the release before."""

import os
import re
import shutil
import subprocess
from dataclasses import dataclass
from pathlib import Path

import start
from inputs import kept, mark, model, real_files, size
from programs import DATA, program
from realmodel import repeated_model
from report import Goal, Section, marked, table
from timing import in_turns, ratio

BEFORE = "before"
NOTATION = "the notation alone"
SMALL = "import of a small file"
NOTHING = "/dev/null"
MEMORY = Path("/dev/shm")  # where Linux has files in memory
PICTURES = (MEMORY / f"petal-bench-{os.getpid()}" if os.access(MEMORY, os.W_OK) else DATA) / "pictures"
EDITED_ROLES = 500  # one in so many gets another name
ROLE = re.compile(rb'\(object Role "[^"\n]+')


@dataclass(frozen=True)
class Job:
    """A command, and how many times the time of another it may take."""

    words: tuple  # of petal, with places for files
    beside: str  # another job, or BEFORE: the same of the release before
    bound: float


IMPORT = ("import", "-q", "{model}", "--format")
JOBS = {
    "import": Job((*IMPORT, "none"), BEFORE, 1.03),
    "json": Job((*IMPORT, "json"), BEFORE, 1.03),
    "summary": Job(("import", "{model}", "--format", "none"), "import", 1.6),
    "ledger": Job((*IMPORT, "none", "--ledger", NOTHING), "import", 2.5),
    "info": Job(("info", "{model}"), BEFORE, 0.7),
    "uml": Job((*IMPORT, "uml"), "json", 2),
    "plantuml": Job((*IMPORT, "plantuml"), "json", 2),
    "mermaid": Job((*IMPORT, "mermaid"), "json", 2),
    "dot": Job((*IMPORT, "dot"), "json", 2),
    "sql": Job((*IMPORT, "sql"), "json", 2),
    "html": Job((*IMPORT, "html"), "json", 3),
    "draw": Job(("draw", "-q", "{model}", "-o", str(PICTURES)), "info", 2),
    "diff": Job(("diff", "-q", "{model}", "{edited}"), "import", 2.5),
}
SMALL_BOUND = 0.85
NOTATION_BOUND = 0.45


def edited(path):
    """The model with other names for some of its roles."""

    def make(copy):
        number = 0

        def renamed(found):
            nonlocal number
            number += 1
            return found[0] + b"Edited" if number % EDITED_ROLES == 0 else found[0]

        copy.write_bytes(ROLE.sub(renamed, path.read_bytes()))

    return kept(f"edited-{path.stem.split('.')[0]}", ".mdl", mark(path.name.encode()), make)


def models(megabytes):
    made = {"an ordinary model": model("plain", megabytes)}
    largest = max((file for file in real_files() if file.suffix == ".mdl"), key=size, default=None)
    repeated = largest and repeated_model(largest, megabytes)
    return made | ({"the logical view of the largest real model over and over": repeated} if repeated else {})


def knows(petal, command):
    told = subprocess.run([petal, command, "--help"], capture_output=True, text=True, check=False).stdout
    return f"Usage: petal {command} " in told


def commands(path, before):
    """Every job of the model, by its name and whose petal runs it."""
    files = {"model": path, "edited": edited(path)}
    made = {}
    for whose, petal in {"": program("petal"), BEFORE: before}.items():
        for name, job in JOBS.items():
            if petal and knows(petal, job.words[0]):
                made[name, whose] = [petal, *(word.format(**files) for word in job.words)]
        if petal:
            made[SMALL, whose] = [petal, *(word.format(model=start.small_model()) for word in JOBS["import"].words)]
            reader = Path(petal).with_name("read-notation")
            if reader.exists():
                made[NOTATION, whose] = [str(reader), str(path)]
    return made


def aims(name):
    """What the job is measured against, and how many times the time of that it may take."""
    if name in JOBS:
        return JOBS[name].beside, JOBS[name].bound
    return BEFORE, SMALL_BOUND if name == SMALL else NOTATION_BOUND


def part(title, path, before, rounds):
    """The table of one model, and its goals."""
    PICTURES.parent.mkdir(exist_ok=True)
    runs = in_turns(commands(path, before), rounds, lambda: shutil.rmtree(PICTURES, ignore_errors=True))
    rows, goals = [], []

    def times(name, beside, whose):
        other = (name, BEFORE) if beside == BEFORE else (beside, whose)
        return ratio(runs[name, whose], runs[other]) if (name, whose) in runs and other in runs else None

    for name in dict.fromkeys(name for name, _ in runs):
        beside, bound = aims(name)
        now, was = runs[name, ""], runs.get((name, BEFORE))
        found = times(name, beside, "")
        found_before = times(name, beside, BEFORE) if beside != BEFORE else None
        rows.append(
            [name, f"{was.cpu * 1000:.1f}" if was else "", f"{now.cpu * 1000:.1f}"]
            + [f"{ratio(now, was):.2f}" if was else "", beside]
            + [f"{found_before:.2f}" if found_before else "", marked(found, bound) if found else "", f"{bound:g}"]
            + [f"{was.peak / 1e6:.1f}" if was else "", f"{now.peak / 1e6:.1f}", f"{now.spread:.1%}"]
        )
        if found:
            goals.append(Goal(f"{title}: {name}, times {beside}", found, bound, is_most=True))
    heads = [title, "ms before", "ms", "ratio", "beside", "times, before", "times", "at most"]
    heads += ["MB before", "MB", "spread"]
    return table(heads, rows), goals


def section(megabytes, before, rounds):
    parts = [part(title, path, before, rounds) for title, path in models(megabytes).items()]
    shutil.rmtree(PICTURES.parent if MEMORY in PICTURES.parents else PICTURES, ignore_errors=True)
    return Section(
        "What people run",
        [
            f"Every command beside the one that it is measured against, on models of {megabytes} MB: imports with each"
            " format, with the summary that petal gives unless told to be quiet, and with a ledger, which goes to"
            " /dev/null; all pictures into a new folder, in memory, as a disk"
            " takes several times as long for so many files; the differences to a copy with other names for some roles;"
            " the import of a model of 30 KB; a program that reads the notation and counts. Processor time and the"
            " most memory held. Before is the petal given with `--before`; what it cannot do has no figure.",
            *(table for table, _ in parts),
        ],
        [goal for _, goals in parts for goal in goals],
        rounds,
    )
