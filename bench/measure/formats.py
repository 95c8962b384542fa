"""What each output takes beside JSON of the same model, and whether that grows in step with the model."""

import shutil

from inputs import model, real_files, remove, size
from programs import DATA, import_of, program
from realmodel import repeated_model
from report import Goal, Section, marked, table
from timing import in_turns, ratio

# How many times the time of the other command each may take.
BOUNDS = {"uml": ("json", 2), "plantuml": ("json", 2), "mermaid": ("json", 2), "dot": ("json", 2), "sql": ("json", 2),
          "html": ("json", 3), "draw": ("info", 2)}

GROWN = ("json", "uml", "plantuml", "dot", "sql", "html")
CLASSES = (1_000, 10_000, 100_000, 1_000_000)
TIME_GROWTH = 1.5  # of the time for a class from one size to the next
MEMORY_GROWTH = 1.5
KEPT = 64  # megabytes; bigger models are deleted once measured


def commands(path):
    """Each output as it is made of a model, and the two commands that they are compared with."""
    made = {name: import_of(path, name) for name, (other, _) in BOUNDS.items() if other == "json"}
    made["json"] = import_of(path, "json")
    made["info"] = [program("petal"), "info", str(path)]
    made["draw"] = [program("petal"), "draw", "-q", str(path), "-o", str(DATA / "pictures")]
    return made


def models(megabytes):
    made = {"plain": model("plain", megabytes)}
    if real_files():
        largest = max(real_files(), key=lambda file: file.stat().st_size)
        repeated = repeated_model(largest, megabytes)
        if repeated is not None:
            made["a real logical view over and over"] = repeated
    return made


def section(megabytes, rounds):
    rows = []
    goals = []
    for name, path in models(megabytes).items():
        runs = in_turns(commands(path), rounds)
        for output, (other, bound) in BOUNDS.items():
            times = ratio(runs[output], runs[other])
            rows.append([f"{name}: {output}", other, f"{runs[output].cpu * 1000 / size(path):.2f}",
                         marked(times, bound), f"{runs[output].peak / 1e6:.1f} MB", f"{runs[output].spread:.1%}"])
            goals.append(Goal(f"{name}: {output}, times {other}", times, bound, is_most=True))
    shutil.rmtree(DATA / "pictures", ignore_errors=True)
    return Section(
        "All outputs",
        [
            f"`petal import -q` of models of {megabytes} MB with each format beside JSON, and all pictures of `petal"
            " draw` beside `petal info`. Processor time.",
            table(["output", "beside", "ms/MB", "times", "memory", "spread"], rows),
        ],
        goals,
        rounds,
    )


def growth(portion, rounds):
    """From 1,000 classes to that share of 1,000,000."""
    levels = [count for count in CLASSES if count <= max(CLASSES[1], CLASSES[-1] * portion)]
    found = {}
    for count in levels:
        path = model("packages-flat", count=count)
        found[count] = in_turns({name: import_of(path, name) for name in GROWN}, rounds)
        if size(path) > KEPT:
            remove(path)
    rows = [
        [f"{name}, {count:,} classes", f"{runs[name].cpu * 1e6 / count:.2f}", f"{runs[name].peak / 1e6:.1f} MB",
         f"{runs[name].peak / count:.0f}", f"{runs[name].spread:.1%}"]
        for name in GROWN for count, runs in found.items()
    ]

    def worst(figure):
        """The format, and how many times the figure it has in the largest model beside the one before."""
        last, before = found[levels[-1]], found[levels[-2]]
        grown = {name: figure(last[name]) / levels[-1] / (figure(before[name]) / levels[-2]) for name in GROWN}
        return max(grown.items(), key=lambda row: row[1])

    slowest, time = worst(lambda runs: runs.cpu)
    biggest, memory = worst(lambda runs: runs.peak)
    return Section(
        "Outputs of more and more classes",
        [
            "`petal import -q` of packages with all classes in one. What a run takes whatever the size shows in the"
            " first rows of each format.",
            table(["output", "µs/class", "memory", "bytes/class", "spread"], rows),
        ],
        [
            Goal(f"time a class in the largest model, times the one before ({slowest})", time, TIME_GROWTH,
                 is_most=True),
            Goal(f"memory a class in the largest model, times the one before ({biggest})", memory, MEMORY_GROWTH,
                 is_most=True),
        ],
        rounds,
    )
