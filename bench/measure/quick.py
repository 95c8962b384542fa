"""A look in under a minute whether anything has become slower: ratios beside the floors that are on record."""

import json

import imports
import notation
import outputs
import scanner
import shapes
import start
from inputs import made_texts, model
from programs import ROOT, has, import_of, summed_up_import_of
from report import Goal
from timing import in_turns, ratio

FLOORS = ROOT / "bench" / "floors.json"
MARGIN = 0.75  # a floor is this share of what was measured: the noise of a busy machine must not cross it
MEMORY_MARGIN = 0.9  # memory hardly varies
SCANNED, IMPORTED, SHAPED = 16, 16, 8  # megabytes
ROUNDS = 5
STARTS = 30

MEMORY = "file beside memory, "


def summary_ratio():
    path = model("plain", IMPORTED)
    runs = in_turns({"quiet": import_of(path), "usual": summed_up_import_of(path)}, ROUNDS)
    return 1 / ratio(runs["usual"], runs["quiet"])


def single_ratios():
    """What measures each ratio that is measured by itself, by name. Ratios are the higher the faster petal is."""
    measures = {
        "import beside import with the summary": summary_ratio,
        "import beside import with outputs": lambda: 1 / outputs.both_outputs(outputs.runs_of(IMPORTED, ROUNDS)),
        "newlines beside notation": lambda: notation.against_lines(model("plain", IMPORTED), ROUNDS),
        "empty process beside small import": lambda: start_ratio(start.QUIET),
        "empty process beside small import with JSON and summary": lambda: start_ratio(start.USUAL),
    }
    if has("scan-bench"):
        for kind, text in made_texts(SCANNED).items():
            measures[f"scanner beside flex, {kind}"] = lambda text=text: scanner.gain(text, ROUNDS)
        measures["import beside flex"] = lambda: imports.gain(IMPORTED, ROUNDS)
    return measures


def start_ratio(command):
    return 1 / start.against_empty(start.runs_of(start.made_model(), STARTS), command)


def shape_ratios(wanted):
    """The time of the ordinary model beside that of each shape, and the file beside the memory, where wanted."""
    known = shapes.shapes()
    chosen = [one for one in known if one == "plain" or wanted(f"plain beside {one}") or wanted(MEMORY + one)]
    if chosen == ["plain"] and not wanted(MEMORY + "plain"):
        return {}
    found = {}
    for shape, of in shapes.figures({one: model(one, SHAPED) for one in chosen}, ROUNDS).items():
        found[f"plain beside {shape}"] = 1 / of.times_plain
        found[MEMORY + shape] = 1 / of.memory
    del found["plain beside plain"]
    return found


def ratios(wanted):
    """The ratios whose names are wanted, and perhaps others."""
    found = {name: measure() for name, measure in single_ratios().items() if wanted(name)}
    return found | shape_ratios(wanted)


def floor_of(name, ratio):
    return round(ratio * (MEMORY_MARGIN if name.startswith(MEMORY) else MARGIN), 3)


def record():
    """Writes floors somewhat below today's ratios. What is not measured here keeps its floor."""
    floors = json.loads(FLOORS.read_text(encoding="ascii")) if FLOORS.exists() else {}
    floors |= {name: floor_of(name, ratio) for name, ratio in ratios(lambda name: True).items()}
    FLOORS.write_text(json.dumps(floors, indent=2) + "\n", encoding="ascii")


def goals_of(found, floors):
    return {name: Goal(name, ratio, floors[name], word="floor") for name, ratio in found.items() if name in floors}


def passes():
    """Whether no ratio is below its floor. Prints all. What missed gets another chance: it may have been disturbed."""
    floors = json.loads(FLOORS.read_text(encoding="ascii"))
    goals = goals_of(ratios(floors.__contains__), floors)
    missed = {name for name, goal in goals.items() if not goal.is_met}
    if missed:
        again = goals_of(ratios(missed.__contains__), floors)
        goals |= {name: goal for name, goal in again.items() if name in missed and goal.figure > goals[name].figure}
    print("\n".join(str(goal) for goal in goals.values()))
    for name in sorted(floors.keys() - goals.keys()):
        print(f"{name}: not measured, for want of a program")
    return bool(goals) and all(goal.is_met for goal in goals.values())
