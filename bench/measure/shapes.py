"""Models that are hard in one way each, beside the ordinary one of the same size."""

import re
import subprocess
from dataclasses import dataclass

from inputs import model, objects, size
from programs import import_of, program
from report import Goal, Section, marked, table
from timing import in_turns, ratio

TIME_BOUND = 2.0
MEMORY_SHARE = 2.5


def shapes():
    """The name of each shape that make-model knows, and what it is."""
    told = subprocess.run([program("make-model"), "--help"], check=True, capture_output=True, text=True).stdout
    return dict(re.findall(r"^\s+([a-z-]+): (.*); counted in .*$", told, re.MULTILINE))


@dataclass(frozen=True)
class Figures:
    time: float  # milliseconds for a megabyte
    times_plain: float  # the time beside that of the ordinary model
    each: float  # microseconds for an object
    memory: float  # bytes held for each byte of the file


def figures(megabytes, rounds):
    """What each shape takes."""
    paths = {shape: model(shape, megabytes) for shape in shapes()}
    runs = in_turns({shape: import_of(path) for shape, path in paths.items()}, rounds)
    return {
        shape: Figures(
            time=runs[shape].cpu * 1000 / size(path),
            times_plain=ratio(runs[shape], runs["plain"]) * size(paths["plain"]) / size(path),
            each=runs[shape].cpu * 1e6 / objects(path),
            memory=runs[shape].peak / size(path) / 1e6,
        )
        for shape, path in paths.items()
    }


def section(megabytes, rounds):
    found = figures(megabytes, rounds)
    meanings = shapes()
    rows = [
        [f"{shape}: {meanings[shape]}", f"{of.time:.2f}"]
        + [marked(of.times_plain, TIME_BOUND), f"{of.each:.1f}", marked(of.memory, MEMORY_SHARE)]
        for shape, of in found.items()
    ]
    slowest = max(found, key=lambda shape: found[shape].times_plain)
    biggest = max(found, key=lambda shape: found[shape].memory)
    return Section(
        "Hard shapes",
        [
            f"Imports of models of {megabytes} MB that hold much of one thing. What misses a goal stands out. The"
            " denser the text, the more objects a MB stands for: an object is what has an identity in the model.",
            table(["model", "ms/MB", "times plain", "µs/object", "memory / file"], rows),
        ],
        [
            Goal(f"the slowest ({slowest}), times the ordinary model", found[slowest].times_plain, TIME_BOUND,
                 is_most=True),
            Goal(f"the biggest ({biggest}), memory, times the file", found[biggest].memory, MEMORY_SHARE,
                 is_most=True),
        ],
    )
