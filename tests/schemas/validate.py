#!/usr/bin/env python3
"""validate.py PETAL DOCUMENTS EXAMPLE...

Holds JSON that petal wrote against the schemas that it prints: the files in the folder DOCUMENTS, which the other tests
have kept, and what it makes of the examples. Each schema must have had something to say about."""
import collections
import json
import pathlib
import subprocess
import sys

import jsonschema


def main(petal, folder, *examples):
    def run(*arguments):
        return subprocess.run([petal, *arguments], capture_output=True, text=True, check=False)

    names = json.loads(run("--version", "--json").stdout)["formats"]
    validators = {}
    for name in names:
        schema = json.loads(run("schema", name).stdout)
        jsonschema.Draft202012Validator.check_schema(schema)
        validators[name] = jsonschema.Draft202012Validator(schema)
    valid, faults = collections.Counter(), []

    def name_of(document):
        if isinstance(document, list):
            return "diagrams" if document and "picture" in document[0] else "info"
        for member, name in (("entry", "ledger"), ("severity", "log"), ("libraries", "version")):
            if member in document:
                return name
        return str(document.get("format", "")).removeprefix("petal-")

    def check(document, where):
        name = name_of(document)
        if name not in validators:
            return
        error = jsonschema.exceptions.best_match(validators[name].iter_errors(document))
        valid[name] += 1
        if error is not None:
            faults.append(f"{where}: {name}: {error.json_path}: {error.message[:300]}")

    def check_text(text, where):
        try:
            check(json.loads(text), where)
        except ValueError:  # a line for each document, or something else, or cut on purpose
            for line in text.splitlines():
                if line.startswith("{"):
                    try:
                        check(json.loads(line), where)
                    except ValueError:
                        pass

    for path in sorted(pathlib.Path(folder).glob("*")):
        check_text(path.read_text(errors="replace"), path)
    commands = [("formats", "--json"), ("--version", "--json"), ("info", "--json", *examples),
                ("draw", "--list", "--json", *examples),
                ("units", "--json", *examples), ("import", "-q", "-f", "none", "--report", "-", *examples)]
    commands += [("diff", "--show", "layout,order,quids", "-f", "json", examples[0], other) for other in examples[1:]]
    for example in examples:
        commands += [("import", "-q", "-f", "json", "-O", "places=true", example), ("import", "-q", example),
                     ("import", "-q", "-f", "none", "--ledger", "-", "--ledger-detail", "all", example)]
    for command in commands:
        ended = run(*command)
        if ended.returncode != 0:
            faults.append(f"petal {' '.join(command)}: {ended.stderr}")
        check_text(ended.stdout, " ".join(command))
    log = run("import", "-f", "none", "-q", "--log-format", "json", "--log-level", "DEBUG", *examples[:1]).stderr
    check_text(log, "log")
    faults += [f"no document for the schema {name}" for name in names if not valid[name]]
    print("\n".join(faults[:40]), *(f"{name}: {valid[name]}" for name in sorted(valid)), sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
