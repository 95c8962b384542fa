"""The scanner alone, beside what searches or only reads the same text."""

import subprocess
from pathlib import Path

from inputs import matches_per_megabyte, real_files, scanner_texts, size
from programs import DATA, has, program
from report import Goal, Section, table
from timing import in_turns, ratio

OURS, FLEX = "petal's scanner", "flex -Cf"
GOALS = {"plain": 8, "dense": 6, "sparse": 15}  # times as fast as flex
REAL = {"plain": "all real models", "dense": "the densest real file", "sparse": "the sparsest real file"}
MADE = {"plain": "a made model", "dense": "a made model of keywords only", "sparse": "a made model of long texts"}

# Into a file: grep stops at the first match when nobody sees what it prints.
GREP = 'LC_ALL=C exec grep -c -F -f "$0" "$1" > "$2"'


def literals():
    """A file with the literals of the scanner's rules, one a line."""
    path = DATA / "literals.txt"
    listed = subprocess.run([program("list-literals")], check=True, capture_output=True, text=True).stdout
    Path(path).write_text(listed, encoding="ascii")
    return path


def commands(text):
    """What is run on a text, by name. Whoever is not installed is left out."""
    of = {
        OURS: [program("scan-bench"), "--only", "0", str(text)],
        FLEX: [program("scan-bench"), "--only", "1", str(text)],
        "grep -c -F": ["sh", "-c", GREP, str(literals()), str(text), str(DATA / "grep.txt")],
        "hyperscan, literals only": [program("count-literals"), str(text)],
        "newlines in 8 KiB reads": [program("count-lines"), str(text)],
        "cat": ["cat", str(text)],
    }
    return {name: command for name, command in of.items() if has(Path(command[0]).name)}


def gain(text, rounds):
    """How many times as fast as flex the scanner is."""
    both = {name: command for name, command in commands(text).items() if name in (OURS, FLEX)}
    runs = in_turns(both, rounds)
    return ratio(runs[FLEX], runs[OURS])


def section(megabytes, rounds):
    has_real = bool(real_files())
    names = REAL if has_real else MADE
    found = Section(
        "The scanner alone",
        [
            f"Programs that scan {megabytes} MB and count: ours with actions that only count, through its own input"
            " layer; the scanner that flex makes of the same rules, which finds the same matches; searches for the"
            " rules' literals; and programs that only look for newlines, or at nothing. Processor time of the whole"
            " program, as MB/s, and how many times as fast ours is.",
        ],
        rounds=rounds,
    )
    if not has_real:
        found.paragraphs.append("Without real models the goals, which are for them, are not tried.")
    for kind, text in scanner_texts(megabytes).items():
        runs = in_turns(commands(text), rounds)
        rows = [
            [name, f"{size(text) / one.cpu:.0f}", f"{ratio(one, runs[OURS]):.2f}", f"{one.spread:.1%}"]
            for name, one in runs.items()
        ]
        found.paragraphs.append(table([f"{names[kind]}, {matches_per_megabyte(text)}", "MB/s", "ours is faster by", "spread"], rows))
        if not has_real:
            continue
        faster = ratio(runs[FLEX], runs[OURS])
        found.goals.append(Goal(f"{names[kind]}, times as fast as flex -Cf", faster, GOALS[kind]))
    return found
