#!/usr/bin/env python3
"""Reports includes of the project's own headers that the including file does not use.

An include is a candidate when no name that the header declares appears in the file: no type, function, member,
enumerator, constant or macro. A candidate is reported when the file still compiles without it: some are needed for a
conversion to a base class alone. This misses unused includes with common names (`size`), but what it reports can go.

Usage: scripts/unused-includes.py BUILD [FILE...]   without FILE: all sources that git knows
BUILD is a configured build folder, whose compile_commands.json says how to compile. Exit status 1 with findings.
"""

import functools
import json
import multiprocessing.pool
import os
import re
import shlex
import subprocess
import sys

FOLDERS = ("src", "tests", "bench", "fuzz")
INCLUDE = re.compile(r'^#include "([^"]+)"[ \t]*$', re.MULTILINE)
NOISE = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.*?)\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'', re.DOTALL)
FORWARD = re.compile(r"^\s*(?:class|struct|enum class|enum)\s+\w+(?:\s*:\s*[\w:]+)?;", re.MULTILINE)
DECLARED = (
    re.compile(r"\b(?:class|struct|enum|union|concept|namespace)\s+(?:class\s+)?(?:[A-Z_]+\s+)?(\w+)"),
    re.compile(r"\busing\s+(\w+)\s*="),
    re.compile(r"\busing\s+[\w:]+::(\w+)\s*;"),
    re.compile(r"\btypedef\b[^;]*?(\w+)\s*;"),
    re.compile(r"^\s*#define\s+(\w+)", re.MULTILINE),
    re.compile(r"(\w+)\s*\("),  # functions, and calls of others: too many names only make the check milder
    re.compile(r"(\w+)\s*(?:\[[^\]]*\]\s*)?(?:=[^=]|;|\{)"),  # variables, members, constants
)
ENUMERATION = re.compile(r"\benum\b[^{;]*\{([^}]*)\}", re.DOTALL)
# Words that a declaration of any header may hold, so that finding them says nothing.
COMMON = set(
    "if for while switch return sizeof const constexpr noexcept override default delete operator explicit static inline "
    "namespace class struct enum public private protected template typename decltype static_assert alignas requires "
    "std rose petal notation units export ledger source text host uint8_t uint16_t uint32_t uint64_t int32_t int64_t "
    "size_t string string_view vector true false nullptr this auto".split()
)


def without_noise(text):
    return NOISE.sub(" ", text)


@functools.lru_cache(maxsize=None)
def contents(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


@functools.lru_cache(maxsize=None)
def declared_names(path):
    text = FORWARD.sub("", without_noise(contents(path)))
    names = set()
    for pattern in DECLARED:
        names.update(pattern.findall(text))
    for body in ENUMERATION.findall(text):
        names.update(re.findall(r"(\w+)\s*(?:=[^,]*)?(?:,|$)", body))
    return {name for name in names - COMMON if not name.isdigit()}


def resolved(name, including):
    """The path of an included header of ours, or None."""
    for folder in (os.path.dirname(including), *FOLDERS):
        path = os.path.normpath(os.path.join(folder, name))
        if os.path.isfile(path):
            return path
    return None


def is_own_header(header, including):
    stem = os.path.splitext(os.path.basename(including))[0]
    return including.endswith(".cpp") and stem == os.path.splitext(os.path.basename(header))[0]


def candidates(path):
    """The line numbers and names of the includes that may be unused."""
    text = contents(path)
    # Forward declarations do not use a header, they replace it.
    words = set(re.findall(r"\w+", FORWARD.sub("", without_noise(INCLUDE.sub("", text)))))
    for match in INCLUDE.finditer(text):
        header = resolved(match.group(1), path)
        if header is None or not header.endswith(".h") or is_own_header(header, path):
            continue
        names = declared_names(header)
        if names and not names & words:
            yield text.count("\n", 0, match.start()) + 1, match.group(1)


def compile_commands(build):
    """How each source is compiled, without its name and without output; under "" how a source of the tests is."""
    commands = {}
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        for entry in json.load(file):
            words = shlex.split(entry["command"])
            words = words[: words.index("-o")]
            if os.path.basename(words[0]) == "ccache":
                words = words[1:]
            path = os.path.relpath(entry["file"])
            commands[path] = words
            if path.startswith("fuzz/"):
                commands[""] = words
    return commands


def compiles_without(command, path, line):
    lines = contents(path).split("\n")
    lines[line - 1] = ""
    arguments = [*command, "-iquote", os.path.dirname(path), "-fsyntax-only", "-Wno-unused", "-x", "c++", "-"]
    return subprocess.run(arguments, input="\n".join(lines), text=True, capture_output=True).returncode == 0


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
    patterns = [f"{folder}/*.{ending}" for folder in FOLDERS for ending in ("cpp", "h")]
    files = sys.argv[2:] or subprocess.check_output(["git", "ls-files", *patterns], text=True).split()
    commands = compile_commands(sys.argv[1])
    found = [(path, *include) for path in files if os.path.isfile(path) for include in candidates(path)]
    with multiprocessing.pool.ThreadPool() as pool:
        removable = pool.starmap(
            lambda path, line, _: compiles_without(commands.get(path, commands[""]), path, line), found
        )
    findings = [finding for finding, can_go in zip(found, removable) if can_go]
    for path, line, name in findings:
        print(f'{path}:{line}: "{name}" is not used')
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
