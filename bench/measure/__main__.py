"""Measures petal and writes docs/performance.md. bench/run calls this once everything is built."""

import os
import re
import sys

import machine
import quick
from arguments import arguments
from sections import SECTIONS

HEAD = """# Performance

Written by `bench/run`, which makes its inputs, builds what it measures and can be run by anyone. Rivals run in turns
with petal; a figure is the median of the rounds that its section names, the spread the middle half of them. Times are
of the processor, not of the clock, unless the table says so. MB are 1,000,000 bytes.
"""


def replaced(text, section):
    """The text with the section in place of that of its title, or behind all others."""
    parts = re.split(r"^(?=## )", text, flags=re.MULTILINE)
    at = next((at for at, part in enumerate(parts) if part.startswith(f"## {section.title}\n")), len(parts))
    parts[at : at + 1] = [str(section)]
    return "".join(part.rstrip("\n") + "\n\n" for part in parts).rstrip("\n") + "\n"


def written_before(path):
    """The file with its head as it is now. It keeps what no measurement writes."""
    if not os.path.exists(path):
        return HEAD
    with open(path, encoding="utf-8") as before:
        _, mark, rest = before.read().partition("\n## ")
    return HEAD + mark + rest


def measure(asked):
    """Measures all sections, or those asked for, and puts them into what was written before. Each says on what it was
    measured, since another may have been measured elsewhere. The file is written after each, so that none is lost."""
    text = written_before(asked.output)
    for name in asked.only or SECTIONS:
        for section in SECTIONS[name](asked):
            print(section, flush=True)
            if section.goals or section.rounds or not asked.only:
                section.paragraphs.insert(1, machine.description())
                text = replaced(text, section)
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
