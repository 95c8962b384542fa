"""Models that are hard in one way each, beside the ordinary one."""

import re
import subprocess
from dataclasses import dataclass

from inputs import model, objects, remove, size
from programs import import_of, program
from report import Goal, Section, marked, table
from timing import in_turns, ratio

TIME_BOUND = 2.0
MEMORY_SHARE = 2.5
KEPT = 64  # bigger models are deleted once measured

# How many of its things each shape must have. The others have no goal and are measured at the size of the ordinary one.
COUNTS = {
    "packages-flat": 1_000_000, "packages-nested": 1_000_000, "attributes": 100_000, "diagrams": 100_000,
    "views": 1_000_000, "associations": 1_000_000, "forward": 1_000_000, "keys": 1_000_000,
}


@dataclass(frozen=True)
class Shape:
    meaning: str
    things: str  # what its counts count


def shapes_told(text):
    """The shapes that the help of make-model lists, by name."""
    found = re.findall(r"^\s+([a-z-]+): (.*); counted in (.*)$", text, re.MULTILINE)
    return {name: Shape(meaning, things) for name, meaning, things in found}


def shapes():
    told = subprocess.run([program("make-model"), "--help"], check=True, capture_output=True, text=True).stdout
    return shapes_told(told)


@dataclass(frozen=True)
class Figures:
    megabytes: float
    time: float  # milliseconds for a megabyte
    times_plain: float  # the time for a megabyte beside that of the ordinary model
    each: float  # microseconds for an object
    memory: float  # bytes held for each byte of the file


def figures(paths, rounds):
    """What each of the models takes, one of which is plain."""
    runs = in_turns({shape: import_of(path) for shape, path in paths.items()}, rounds)
    return {
        shape: Figures(
            megabytes=size(path),
            time=runs[shape].cpu * 1000 / size(path),
            times_plain=ratio(runs[shape], runs["plain"]) * size(paths["plain"]) / size(path),
            each=runs[shape].cpu * 1e6 / objects(path),
            memory=runs[shape].peak / size(path) / 1e6,
        )
        for shape, path in paths.items()
    }


def section(megabytes, portion, rounds):
    known = shapes()
    counts = {shape: max(1, round(count * portion)) for shape, count in COUNTS.items()}
    paths = {
        shape: model(shape, count=counts[shape]) if shape in counts else model(shape, megabytes) for shape in known
    }
    found = figures(paths, rounds)
    for path in paths.values():
        if size(path) > KEPT * 1.1:
            remove(path)
    rows = [
        [f"{shape}: {known[shape].meaning}"]
        + [f"{counts[shape]:,} {known[shape].things}" if shape in counts else ""]
        + [f"{of.megabytes:.0f}", f"{of.time:.2f}"]
        + [marked(of.times_plain, TIME_BOUND if shape in counts else of.times_plain), f"{of.each:.1f}"]
        + [marked(of.memory, MEMORY_SHARE if shape in counts else of.memory)]
        for shape, of in found.items()
    ]
    slowest = max(counts, key=lambda shape: found[shape].times_plain)
    biggest = max(counts, key=lambda shape: found[shape].memory)
    return Section(
        "Hard shapes",
        [
            "Imports (`petal import -q --format none`) of models that hold much of one thing. Objects are written as in"
            " real files, with as many bytes as they have there on average; but the views of the associations are bare:"
            " whole ones would make ten times the text. The denser the text, the more objects a MB stands for: an"
            " object is what has an identity in the model. What has a count has goals, and stands out where it misses"
            " one.",
            table(["model", "count", "MB", "ms/MB", "times plain", "µs/object", "memory / file"], rows),
        ],
        [
            Goal(f"the slowest ({slowest}), times the ordinary model", found[slowest].times_plain, TIME_BOUND,
                 is_most=True),
            Goal(f"the biggest ({biggest}), memory, times the file", found[biggest].memory, MEMORY_SHARE,
                 is_most=True),
        ],
        rounds,
    )
