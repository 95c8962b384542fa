"""Measures petal and writes docs/performance.md. bench/run calls this once everything is built."""

import argparse
import sys

import imports
import machine
import outputs
import passes
import quick
import scanner
import shapes
import sizes
import start
from programs import ROOT, has
from report import Section

HEAD = """# Performance

Written by `bench/run`, which makes its inputs, builds what it measures and can be run by anyone. Rivals run in turns
with petal; a figure is the median of {rounds} rounds, the spread the middle half of them. Times are of the processor,
not of the clock, unless the table says so. MB are 1,000,000 bytes.

{machine}
"""


def arguments():
    parser = argparse.ArgumentParser(prog="bench/run", description=__doc__)
    parser.add_argument("--quick", action="store_true", help="only compare ratios with the floors on record")
    parser.add_argument("--record", action="store_true", help="put today's ratios, less a margin, on record")
    parser.add_argument("--rounds", type=int, default=7, help="how often everything runs")
    parser.add_argument("--scanned", type=int, default=128, help="megabytes for the scanner")
    parser.add_argument("--imported", type=int, default=64, help="megabytes for imports")
    parser.add_argument("--largest", type=int, default=1024, help="megabytes of the largest model")
    parser.add_argument("--output", default=str(ROOT / "docs" / "performance.md"), help="the file that is written")
    return parser.parse_args()


def sections(asked):
    """Each section when it is measured."""
    if has("scan-bench"):
        yield scanner.section(asked.scanned, asked.rounds)
        yield imports.section(asked.imported, asked.rounds)
    else:
        yield Section("The scanner", ["Not measured: there is no bench of the scanner, which needs flex."])
    yield sizes.section(asked.largest, asked.rounds)
    yield shapes.section(asked.imported, max(1, asked.rounds // 2))
    yield passes.section(asked.imported, ("plain", "dense", "types"))
    yield outputs.section(asked.imported, asked.rounds)
    yield start.section(max(20, asked.rounds))


def measure(asked):
    text = HEAD.format(rounds=asked.rounds, machine=machine.description())
    for section in sections(asked):
        print(section, flush=True)
        text += f"\n{section}"
    with open(asked.output, "w", encoding="utf-8") as out:
        out.write(text)


def main():
    asked = arguments()
    if asked.record:
        quick.record()
    elif asked.quick:
        return 0 if quick.passes() else 1
    else:
        measure(asked)
    return 0


sys.exit(main())
