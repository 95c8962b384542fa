"""Whether time and memory grow in step with what a model holds, from 1,000 things to 1,000,000."""

import picture
from inputs import model, objects, remove, size
from programs import has, import_of
from report import Goal, Section, marked, table
from timing import in_turns

OUTPUTS = ("none", "json", "uml", "plantuml", "dot", "sql", "html")
CLASSES = (1_000, 10_000, 100_000, 1_000_000)
SHAPES = ("packages-flat", "types", "attributes", "keys", "forward")
COUNTS = (10_000, 100_000, 1_000_000)
GROWTH = 1.5  # of the figure for each thing from one size to the next, in time and in memory
OBJECT_BOUND = 2.0  # microseconds
MEMORY_SHARE = 2.5  # of the file
KEPT = 64  # megabytes; bigger models are deleted once measured


def up_to(levels, portion):
    """The levels up to that share of the last, but always two."""
    return [count for count in levels if count <= max(levels[1], levels[-1] * portion)]


def measured(shape, count, outputs, rounds):
    """The runs of each output, the megabytes of the model and its objects."""
    path = model(shape, count=count)
    found = in_turns({name: import_of(path, name) for name in outputs}, rounds), size(path), objects(path)
    if size(path) > KEPT:
        remove(path)
    return found


def worst(figures):
    """Of figures by name and count: the name whose figure grows most to the last count, and how many times."""
    def grown(of):
        *_, before, last = sorted(of)
        return of[last] / of[before]

    return max(((name, grown(of)) for name, of in figures.items()), key=lambda row: row[1])


def of_outputs(portion, rounds):
    """The section of outputs of more and more classes, and the microseconds for a class by output and count."""
    levels = up_to(CLASSES, portion)
    found = {count: measured("packages-flat", count, OUTPUTS, rounds)[0] for count in levels}
    times = {name: {count: found[count][name].cpu * 1e6 / count for count in levels} for name in OUTPUTS}
    memory = {name: {count: found[count][name].peak / count for count in levels} for name in OUTPUTS}
    rows = [
        [f"{name}, {count:,} classes", f"{times[name][count]:.2f}", f"{found[count][name].peak / 1e6:.1f} MB",
         f"{memory[name][count]:.0f}", f"{found[count][name].spread:.1%}"]
        for name in OUTPUTS for count in levels
    ]
    slowest, time = worst(times)
    biggest, held = worst(memory)
    made = Section(
        "Outputs of more and more classes",
        [
            "`petal import -q` of packages with all classes in one. What a run takes whatever the size shows in the"
            " first rows of each format.",
            table(["output", "µs/class", "memory", "bytes/class", "spread"], rows),
        ],
        [
            Goal(f"time a class in the largest model, times the one before ({slowest})", time, GROWTH, is_most=True),
            Goal(f"memory a class in the largest model, times the one before ({biggest})", held, GROWTH, is_most=True),
        ],
        rounds,
    )
    return made, times


def of_shapes(portion, rounds):
    """The section of hard shapes of more and more objects; the microseconds for an object and the memory as a share of
    the file, both by shape and count."""
    levels = up_to(COUNTS, portion)
    times, shares, rows = {}, {}, []
    for shape in SHAPES:
        for count in levels:
            runs, megabytes, number = measured(shape, count, ("none",), rounds)
            each, share = runs["none"].cpu * 1e6 / number, runs["none"].peak / megabytes / 1e6
            times.setdefault(shape, {})[count] = each
            shares.setdefault(shape, {})[count] = share
            rows.append([f"{shape}, {count:,}", f"{megabytes:.1f}", f"{number:,}", marked(each, OBJECT_BOUND),
                         marked(share, MEMORY_SHARE), f"{runs['none'].spread:.1%}"])
    last = levels[-1]
    slowest = max(times, key=lambda shape: times[shape][last])
    biggest = max(shares, key=lambda shape: shares[shape][last])
    made = Section(
        "Hard shapes of more and more objects",
        [
            "`petal import -q --format none` of the models that are hard in one way each, with ten times as much in"
            " each as in the one before. The process itself, about 8 MB, shows in the memory of the first.",
            table(["model", "MB", "objects", "µs/object", "memory / file", "spread"], rows),
        ],
        [
            Goal(f"the slowest ({slowest}), for an object of the largest model", times[slowest][last], OBJECT_BOUND,
                 is_most=True, unit=" µs"),
            Goal(f"the biggest ({biggest}), memory, times the file of the largest model", shares[biggest][last],
                 MEMORY_SHARE, is_most=True),
        ],
        rounds,
    )
    return made, times, shares


def sections(portion, rounds):
    """Both sections. Draws the picture of both, when it can be drawn."""
    outputs, output_times = of_outputs(portion, rounds)
    shapes, shape_times, shares = of_shapes(portion, rounds)
    if has("gnuplot"):
        picture.draw([
            ("µs an object of hard shapes", "objects of the kind", shape_times, OBJECT_BOUND),
            ("memory, times the file", "objects of the kind", shares, MEMORY_SHARE),
            ("µs a class, by output", "classes", output_times, None),
        ])
        shapes.paragraphs.append("![How time and memory grow](pictures/growth.svg)")
    yield outputs
    yield shapes
