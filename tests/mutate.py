#!/usr/bin/env python3
"""Mutation testing: how many small faults in the sources do the tests notice?

    tests/mutate.py [-n COUNT] [--seed SEED] [-j JOBS] [--tests PROGRAM,...] FOLDER...
    tests/mutate.py -n 100 src/builder src/completion src/types src/bridge src/scanner

Picks COUNT random places in the sources of the folders and applies one mutation at a time: swaps an operator, a
constant or an enumerator, negates a condition, deletes a statement. The mutated tree is a scratch copy (one per job), never
the working tree. The test programs are built incrementally and run in turn, under limits of time and memory, until one
fails. A mutant that no test program notices has survived: it shows a missing test, or a change without effect.

Mutants that the compiler refuses are reported and replaced by others. The same seed picks the same mutants in the same
sources. The scratch copies stay to be looked at; --list shows the mutants and builds nothing. With ccache it starts sooner.
"""

import argparse
import concurrent.futures
import difflib
import os
import pathlib
import queue
import random
import re
import resource
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
TESTS = ["import_test", "builder_test", "completion_test", "types_test", "bridge_test", "source_test", "ledger_test",
         "scanner_test", "reliability_test"]
MEMORY = 4 << 30  # bytes of address space for a test program

# Name, what is replaced, replacement: a text or a function of the match.
SWAPS = [
    ("equality", r"(?<![=!<>])(==|!=)", {"==": "!=", "!=": "=="}),
    ("relation", r"(?<= )(<=?|>=?)(?= )", {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}),
    ("logic", r"(?<= )(&&|\|\|)(?= )", {"&&": "||", "||": "&&"}),
    ("truth", r"\b(true|false)\b", {"true": "false", "false": "true"}),
    ("offset", r"(?<=[\w\])] )([+-])(?= 1\b)", {"+": "-", "-": "+"}),
    ("step", r"(\+\+|--)", {"++": "--", "--": "++"}),
    ("number", r"(?<![\w.'\"])(\d+)(?![\w.'\"])", lambda text: str(int(text) + 1)),
]
CONDITION = re.compile(r"^(\s*(?:\} else )?(?:if|while) \()(.*)(\) \{)$")
STATEMENT = re.compile(r"^\s+(?!return|throw|delete|using|else|case|default|break|continue)"
                       r"(?:(?:\+\+|--)?[\w.:>\[\]-]+(?:\(.*\))?(?:\s*[-+|&]?=\s.*)?|[\w.:>-]+<[^;]*>\(.*\));$")
DATA = re.compile(r'^\s*(\{.*\}\}?[,;]+|"[^"]*"[,;]?|\w+\[\] = \{.*\};)\s*(//.*)?$')


def code_of(line, in_comment):
    """The line with comments and the contents of literals blanked, and whether a comment is open at its end."""
    out, at, quote = "", 0, None
    while at < len(line):
        pair = line[at:at + 2]
        if in_comment:
            in_comment = pair != "*/"
            step = 1 if in_comment else 2
        elif quote:
            step = 2 if line[at] == "\\" else 1
            quote = None if line[at] == quote else quote
            if quote is None:
                out, at = out + '"', at + 1
                continue
        elif pair == "//":
            return out + " " * (len(line) - at), False
        elif pair == "/*":
            in_comment, step = True, 2
        elif line[at] == '"' or (line[at] == "'" and not out[-1:].isalnum()):
            quote = line[at]
            out, at = out + '"', at + 1
            continue
        else:
            out, at = out + line[at], at + 1
            continue
        out, at = out + " " * step, at + step
    return out, in_comment


def enumerators():
    """For "Type::name" the next enumerator of the type, of all scoped enumerations of the sources."""
    following = {}
    for header in sorted((ROOT / "src").rglob("*.h")):
        text = re.sub(r"//.*", "", header.read_text())
        for kind, body in re.findall(r"enum class (\w+)[^{;]*\{([^}]*)\}", text):
            names = re.findall(r"(\w+)(?:\s*=[^,]*)?(?:,|\s*$)", body)
            following.update({f"{kind}::{name}": f"{kind}::{other}" for name, other in zip(names, names[1:] + names[:1])})
    return following


def mutants_of(path, following, with_tables):
    """All mutants of a file: (path, line number, kind, the line, the line mutated)."""
    in_comment, before, found = False, "", []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        code, in_comment = code_of(line, in_comment)
        starts_statement = before.strip() == "" or before.rstrip()[-1] in ";{}:"
        before = code if code.strip() else before
        if re.match(r"\s*(#|using |static_assert|template|namespace|$)", code) or (not with_tables and DATA.match(line)):
            continue

        def add(kind, mutated):
            if mutated != line:
                found.append((path.relative_to(ROOT), number, kind, line, mutated))

        for kind, pattern, other in SWAPS:
            for match in re.finditer(pattern, code):
                text = other[match[1]] if isinstance(other, dict) else other(match[1])
                add(kind, line[:match.start(1)] + text + line[match.end(1):])
        for match in re.finditer(r"\b\w+::\w+\b", code):
            if match[0] in following:
                add("enumerator", line[:match.start()] + following[match[0]] + line[match.end():])
        if condition := CONDITION.match(code):
            begin = condition.end(1)
            begin = code.rindex(";", 0, condition.end(2)) + 2 if ";" in condition[2] else begin
            add("condition", line[:begin] + "!(" + line[begin:condition.end(2)] + ")" + line[condition.end(2):])
        if starts_statement and STATEMENT.match(code) and path.suffix == ".cpp":
            add("deletion", re.match(r"\s*", line)[0] + ";")
    return found


class Tree:
    """A scratch copy of the tree with a build of the tests."""

    def __init__(self, folder, args):
        self.folder, self.args, self.limits = folder, args, {}
        folder.mkdir(parents=True, exist_ok=True)
        for name in self.names(ROOT) | self.names(folder):
            source, copy = ROOT / name, folder / name
            if not source.is_file():
                copy.unlink(missing_ok=True)
            elif not copy.is_file() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
        shutil.rmtree(folder / "build", ignore_errors=True)  # a run that was interrupted may have left a mutant's objects
        launcher = ["-DCMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        self.environment = {**os.environ, "CCACHE_BASEDIR": str(folder), "CCACHE_NOHASHDIR": "1"}
        self.run(["cmake", "--preset", "release", *launcher,
                  *(f"-D{setting}" for setting in args.define)], 600).check_returncode()
        if failure := self.first_failure():
            sys.exit(f"{folder}: the tree as it is does not pass: {failure}")

    @staticmethod
    def names(folder):
        """What belongs to the sources in a tree or in its copy."""
        if (folder / ".git").exists():
            listing = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=folder, check=True,
                                     capture_output=True, text=True)
            return set(listing.stdout.splitlines())
        return {str(path.relative_to(folder)) for path in folder.rglob("*")
                if path.is_file() and path.relative_to(folder).parts[0] != "build"}

    def run(self, command, limit, **more):
        return subprocess.run(command, cwd=self.folder, env=self.environment, timeout=limit, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, **more)

    def first_failure(self):
        """Builds and runs one program after the other; most mutants need no more than the first."""
        limit_memory = lambda: resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
        for test in self.args.tests:
            build = ["cmake", "--build", "build", "-j", str(self.args.build_jobs), "--target", test]
            if self.run(build, 3600).returncode != 0:
                return "not compiling"
            try:
                start = time.monotonic()
                command = [f"build/bin/{test}", "--gtest_fail_fast", "--gtest_brief=1"]
                if self.run(command, self.limits.get(test, 600), preexec_fn=limit_memory).returncode != 0:
                    return test
                self.limits.setdefault(test, self.args.patience * (time.monotonic() - start + 1))
            except subprocess.TimeoutExpired:
                return f"{test} (time limit)"
        return None

    def outcome(self, mutant):
        path, number, _, _, mutated = mutant
        file = self.folder / path
        original = file.read_text()
        lines = original.splitlines(keepends=True)
        lines[number - 1] = mutated + "\n"
        file.write_text("".join(lines))
        try:
            return self.first_failure() or "SURVIVED"
        finally:
            file.write_text(original)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folders", nargs="+", type=pathlib.Path, metavar="FOLDER", help="source folders or files to mutate")
    parser.add_argument("-n", "--count", type=int, default=20, help="mutants that compile (default: 20)")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("-j", "--jobs", type=int, default=1, help="mutants at a time, each in a tree (default: 1)")
    parser.add_argument("--build-jobs", type=int, default=2, help="compilers at a time in each tree (default: 2)")
    parser.add_argument("--tests", type=lambda names: names.split(","), default=TESTS, metavar="PROGRAM,...",
                        help=f"default: {','.join(TESTS)}")
    parser.add_argument("--patience", type=float, default=10,
                        help="how many times as long as without a fault a test program may take (default: 10)")
    parser.add_argument("--tables", action="store_true", help="also mutate tables of data")
    parser.add_argument("--only", metavar="FILE:LINE", action="append", help="only the mutants of this line")
    parser.add_argument("--list", action="store_true", help="show the mutants and stop")
    parser.add_argument("-D", dest="define", action="append", default=[], metavar="NAME=VALUE", help="a setting for cmake")
    parser.add_argument("--scratch", type=pathlib.Path, default=pathlib.Path("/tmp/mutants"),
                        help="folder for the scratch copies (default: /tmp/mutants)")
    args = parser.parse_args()

    following = enumerators()
    paths = {path for folder in args.folders for path in ([folder] if folder.is_file() else folder.rglob("*"))}
    mutants = [mutant for path in sorted(path.resolve() for path in paths if path.suffix in (".cpp", ".h"))
               for mutant in mutants_of(path, following, args.tables)]
    if args.only:
        mutants = [mutant for mutant in mutants if f"{mutant[0]}:{mutant[1]}" in args.only]
    random.Random(args.seed).shuffle(mutants)
    if args.list:
        for path, number, kind, line, mutated in mutants[:args.count]:
            print(f"{path}:{number}: {kind}\n  - {line.strip()}\n  + {mutated.strip()}")
        return 0

    trees, waiting = queue.Queue(), iter(mutants)
    for job in range(args.jobs):  # one after the other: the second finds the objects of the first in the cache
        trees.put(Tree((args.scratch / str(job)).resolve(), args))

    def judge(mutant):
        tree = trees.get()
        try:
            return mutant, tree.outcome(mutant)
        finally:
            trees.put(tree)

    killed = survived = refused = 0
    with concurrent.futures.ThreadPoolExecutor(args.jobs) as pool:
        running = set()
        while True:
            while len(running) < min(args.jobs, args.count - killed - survived) and (mutant := next(waiting, None)):
                running.add(pool.submit(judge, mutant))
            if not running:
                break
            done, running = concurrent.futures.wait(running, return_when=concurrent.futures.FIRST_COMPLETED)
            for (path, number, kind, line, mutated), outcome in (future.result() for future in done):
                survived += outcome == "SURVIVED"
                refused += outcome == "not compiling"
                killed += outcome not in ("SURVIVED", "not compiling")
                print(f"{path}:{number}: {kind}: {outcome}")
                print("\n".join(list(difflib.unified_diff([line.strip()], [mutated.strip()], lineterm="", n=0))[3:]), flush=True)
    print(f"killed {killed} of {killed + survived}; survived: {survived}; not compiling: {refused}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
