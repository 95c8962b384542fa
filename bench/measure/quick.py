"""A look in under a minute whether anything has become slower: ratios beside the floors that are on record."""

import json

import imports
import outputs
import scanner
import shapes
import start
from inputs import made_texts
from programs import ROOT, has
from report import Goal

FLOORS = ROOT / "bench" / "floors.json"
MARGIN = 0.75  # a floor is this share of what was measured: the noise of a busy machine must not cross it
SCANNED, IMPORTED, SHAPED = 16, 16, 8  # megabytes
ROUNDS = 5
STARTS = 30
ATTEMPTS = 2


def ratios():
    """Ratios that are the higher the faster petal is, and the less memory it takes, by name."""
    found = {}
    if has("scan-bench"):
        for kind, gain in scanner.gains(made_texts(SCANNED), ROUNDS).items():
            found[f"scanner beside flex, {kind}"] = gain
        found["import beside flex"] = imports.gain(IMPORTED, ROUNDS)
    found["import beside import with outputs"] = 1 / outputs.both_outputs(outputs.runs_of(IMPORTED, ROUNDS))
    found["empty process beside small import"] = 1 / start.against_empty(start.runs_of(start.made_model(), STARTS))
    for shape, of in shapes.figures(SHAPED, ROUNDS).items():
        if shape != "plain":
            found[f"plain beside {shape}"] = 1 / of.times_plain
        found[f"file beside memory, {shape}"] = 1 / of.memory
    return found


def record():
    """Writes floors somewhat below today's ratios. What is not measured here keeps its floor."""
    floors = json.loads(FLOORS.read_text(encoding="ascii")) if FLOORS.exists() else {}
    floors |= {name: round(ratio * MARGIN, 3) for name, ratio in ratios().items()}
    FLOORS.write_text(json.dumps(floors, indent=2) + "\n", encoding="ascii")


def passes():
    """Whether no ratio is below its floor. Prints all. What other programs disturb gets another chance."""
    floors = json.loads(FLOORS.read_text(encoding="ascii"))
    best = {}
    for _ in range(ATTEMPTS):
        best = {name: max(ratio, best.get(name, 0)) for name, ratio in ratios().items() if name in floors}
        goals = [Goal(name, ratio, floors[name], word="floor") for name, ratio in best.items()]
        if all(goal.is_met for goal in goals):
            break
    print("\n".join(str(goal) for goal in goals))
    for name in floors.keys() - best.keys():
        print(f"{name}: not measured, for want of a program")
    return bool(goals) and all(goal.is_met for goal in goals)
