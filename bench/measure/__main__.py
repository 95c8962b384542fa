"""Measures petal and writes docs/performance.md. bench/run calls this once everything is built."""

import re
import sys

import archives
import catalog
import formats
import imports
import machine
import notation
import outputs
import page
import passes
import quick
import scanner
import shapes
import sizes
import start
import summary
from arguments import arguments
from programs import has
from report import Section

HEAD = """# Performance

Written by `bench/run`, which makes its inputs, builds what it measures and can be run by anyone. Rivals run in turns
with petal; a figure is the median of the rounds that its section names, the spread the middle half of them. Times are
of the processor, not of the clock, unless the table says so. MB are 1,000,000 bytes.

{machine}
"""


def sections(asked):
    """Each section when it is measured."""
    fewer = max(1, asked.rounds // 2)
    if has("scan-bench"):
        yield scanner.section(asked.scanned, asked.rounds)
        yield imports.section(asked.imported, asked.rounds)
    else:
        yield Section("The scanner", ["Not measured: there is no bench of the scanner, which needs flex."])
    yield summary.section(asked.imported, asked.rounds)
    yield sizes.section(asked.largest, asked.rounds)
    yield shapes.section(asked.imported, asked.portion, fewer)
    yield passes.section(asked.imported, ("plain", "dense", "types"))
    yield outputs.section(asked.imported, asked.rounds)
    yield catalog.section(max(4, asked.imported // 4), fewer)
    yield formats.section(asked.imported, fewer)
    yield formats.growth(asked.portion, fewer)
    yield page.section(asked.rounds)
    yield start.section(max(20, asked.rounds))
    yield archives.section(asked.archived, asked.before, fewer)
    yield notation.section(asked.imported, asked.rounds)


def replaced(text, section, about):
    """The text with the section in place of that of its title, or behind all others; it says what it was measured on."""
    section.paragraphs.insert(1, about)
    parts = re.split(r"^(?=## )", text, flags=re.MULTILINE)
    at = next((at for at, part in enumerate(parts) if part.startswith(f"## {section.title}\n")), len(parts))
    parts[at : at + 1] = [str(section)]
    return "".join(part.rstrip("\n") + "\n\n" for part in parts).rstrip("\n") + "\n"


def measure_page(asked):
    """Measures the section of pages alone, and puts it into what was written before."""
    section = page.section(asked.rounds)
    print(section, flush=True)
    if section.goals:
        with open(asked.output, encoding="utf-8") as before:
            text = replaced(before.read(), section, machine.description())
        with open(asked.output, "w", encoding="utf-8") as out:
            out.write(text)


def measure(asked):
    text = HEAD.format(machine=machine.description())
    for section in sections(asked):
        print(section, flush=True)
        text += f"\n{section}"
    with open(asked.output, "w", encoding="utf-8") as out:
        out.write(text)


def main():
    asked = arguments()
    if asked.record:
        quick.record()
    elif asked.page:
        measure_page(asked)
    elif asked.quick:
        return 0 if quick.passes() else 1
    else:
        measure(asked)
    return 0


sys.exit(main())
