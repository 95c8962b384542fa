#!/usr/bin/env python3
"""check-css.py STYLE.css SOURCE...: checks a style sheet and whether the HTML and JavaScript sources use it.

Reports errors of the syntax, properties that a rule sets twice, custom properties that are not defined or not used, and
classes and ids that no source has. Ends with 1 if there is anything to report.
"""
import re
import sys

sys.path.append("/usr/lib/python3/dist-packages")  # for another Python than Debian's
import tinycss2

faults = []


def report(node, text):
    faults.append(f"{sys.argv[1]}:{node.source_line}: {text}")


def declarations_of(rule, used, defined):
    seen = set()
    for item in tinycss2.parse_declaration_list(rule.content, skip_comments=True, skip_whitespace=True):
        if item.type == "error":
            report(item, item.message)
        elif item.type == "declaration":
            if item.name in seen:
                report(item, f"{item.name} is set twice")
            seen.add(item.name)
            if not item.value or all(token.type == "whitespace" for token in item.value):
                report(item, f"{item.name} has no value")
            if item.name.startswith("--"):
                defined.setdefault(item.name, item)
            for name in re.findall(r"var\((--[\w-]+)", tinycss2.serialize(item.value)):
                used.setdefault(name, item)


def check_rules(rules, sources, used, defined):
    for rule in rules:
        if rule.type == "error":
            report(rule, rule.message)
        elif rule.type == "at-rule":
            inner = tinycss2.parse_rule_list(rule.content or [], skip_comments=True, skip_whitespace=True)
            check_rules(inner, sources, used, defined)
        elif rule.type == "qualified-rule":
            selector = tinycss2.serialize(rule.prelude)
            for name in re.findall(r"[.#]([A-Za-z][\w-]*)", selector):
                made = name.rpartition("-")[0] + "-${"  # a script may put a name together
                if made not in sources and not re.search(rf"(?<![\w-]){re.escape(name)}(?![\w-])", sources):
                    report(rule, f"nothing has the class or id '{name}'")
            declarations_of(rule, used, defined)


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        rules = tinycss2.parse_stylesheet(file.read(), skip_comments=True, skip_whitespace=True)
    sources = ""
    for path in sys.argv[2:]:
        with open(path, encoding="utf-8") as file:
            sources += file.read()
    used, defined = {}, {}
    check_rules(rules, sources, used, defined)
    for name, item in used.items():
        if name not in defined:
            report(item, f"{name} is not defined")
    for name, item in defined.items():
        if name not in used:
            report(item, f"{name} is not used")
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
