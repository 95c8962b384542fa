#!/usr/bin/env python3
"""mutations_test.py PETAL FOLDER-OF-REAL-MODELS EXAMPLE...

Changes models in known ways, and expects `petal diff` to find these changes and no others. The changes are made in JSON
documents, where what else follows from each is known: the ids of the document stay, so that this test knows which
elements are the same. It writes the ids into the lines, in which petal gives them back, and takes the quids away for a
part of the edits. What only files have (layout, units) is changed in files."""
import collections
import json
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

LISTS = ("types", "packages", "elements", "diagrams", "arguments", "attributes", "operations", "keys", "roles")
KINDS = {"types": "type", "packages": "package", "diagrams": "diagram", "arguments": "argument",
         "attributes": "attribute", "operations": "operation", "keys": "key", "roles": "role"}
NOT_FIELDS = {"id", "kind", "line", "quid", "file", "name", "position", "origins"}
SINGLE = {"type", "returnType", "class", "client", "supplier", "realizationClass", "specificationClass", "derivedFrom",
          "candidateKey"}
MIRROR = {"added": "removed", "removed": "added", "narrowed": "widened", "widened": "narrowed"}
FOUND_WITHOUT_QUIDS = 0.95


def children(element):
    for name in LISTS:
        for child in element.get(name, []):
            if isinstance(child, dict):
                yield KINDS.get(name) or child["kind"], name, child


def walk(document):
    """(kind, owner's id, element) of all elements but the model."""
    todo = [document["model"]]
    while todo:
        owner = todo.pop()
        for kind, _, child in children(owner):
            yield kind, owner["id"], child
            todo.append(child)


def facts(document):
    """By id: kind, owner, name and all fields, with references as ids."""
    found = {}
    for kind, owner, element in walk(document):
        fields = {}
        for name, value in element.items():
            if name in NOT_FIELDS and not (name == "kind" and kind in ("key", "type")):
                continue
            if isinstance(value, list):
                if value and isinstance(value[0], dict) and name in LISTS:
                    continue
                value = sorted(json.dumps(one, sort_keys=True) for one in value)
            if value not in (None, "", 0, False, []):
                fields[name] = value
        if kind == "operation":
            fields["arguments"] = [one["id"] for one in element.get("arguments", [])]
        found[element["id"]] = (kind, owner, element["name"], fields)
    return found


def expected(old, new):
    """The changes: (kind, old id or None, new id or None, field or None)."""
    olds, news = facts(old), facts(new)
    changes = collections.Counter()
    for id_ in olds.keys() - news.keys():
        changes[olds[id_][0], id_, None, None] += 1
    for id_ in news.keys() - olds.keys():
        changes[news[id_][0], None, id_, None] += 1
    for id_ in olds.keys() & news.keys():
        (kind, owner, name, fields), (_, new_owner, new_name, new_fields) = olds[id_], news[id_]
        if name != new_name:
            changes[kind, id_, id_, "name"] += 1
        if owner != new_owner:
            changes[kind, id_, id_, "owner"] += 1
        for field in fields.keys() | new_fields.keys():
            one, other = fields.get(field), new_fields.get(field)
            if field == "arguments" and isinstance(one, list) and kind == "operation":
                one, other = [x for x in one if x in other], [x for x in other if x in one]
            if one != other:
                changes[kind, id_, id_, field] += 1
    return changes


def told(report):
    return collections.Counter((c["kind"], c.get("old", {}).get("line"), c.get("new", {}).get("line"), c.get("field"))
                               for c in report["changes"])


class Editor:
    """Edits a document, each time in one way. `names` are those of the edits."""

    def __init__(self, document, chance):
        self.document, self.chance = document, chance
        self.last = max((e["id"] for _, _, e in walk(document)), default=1)
        self.elements = {e["id"]: (kind, owner, e) for kind, owner, e in walk(document)}
        self.owners = {owner: [] for _, owner, _ in self.elements.values()}

    def pick(self, *kinds, fits=lambda element: True):
        found = [e for kind, _, e in self.elements.values() if kind in kinds and fits(e)]
        return self.chance.choice(found) if found else None

    def owner_of(self, element):
        owner = self.elements[element["id"]][1]
        return self.document["model"] if owner == self.document["model"]["id"] else self.elements[owner][2]

    def fresh_name(self):
        return "Fresh" + str(self.chance.randrange(10 ** 6))

    def rename(self, *kinds):
        element = self.pick(*kinds, fits=lambda e: e["name"])
        if element:
            element["name"] = self.fresh_name()
        return element

    def rename_class(self):
        # without members and relations nothing tells it from others
        referred = collections.Counter(e["class"] for kind, _, e in self.elements.values()
                                       if kind == "role" and "class" in e)
        element = self.pick("class", fits=lambda e: e.get("attributes") or e.get("operations") or referred[e["id"]] > 1)
        if element:
            element["name"] = self.fresh_name()
        return element

    def rename_attribute(self):
        return self.rename("attribute")

    def rename_operation(self):
        return self.rename("operation")

    def retype(self):
        element = self.pick("attribute", fits=lambda e: "type" in e)
        types = [t["id"] for t in self.document["model"].get("types", []) if element and t["id"] != element["type"]]
        if not types:
            return None
        element["type"] = self.chance.choice(types)
        return element

    def document_it(self):
        element = self.pick("class", "attribute", "operation", "package", "association")
        if element:
            element["description"] = self.fresh_name()
        return element

    def stereotype(self):
        element = self.pick("class")
        if element:
            element["stereotype"] = self.fresh_name()
        return element

    def multiplicity(self):
        element = self.pick("role")
        if element:
            element["multiplicity"] = "7..9"
        return element

    def abstract(self):
        element = self.pick("class")
        if element:
            element["isAbstract"] = not element.get("isAbstract", False)
        return element

    def remove(self):
        element = self.pick("class", "attribute", "operation", "association", "diagram")
        if not element:
            return None
        for name in LISTS:
            owned = self.owner_of(element).get(name, [])
            if any(one is element for one in owned):
                owned[:] = [one for one in owned if one is not element]
        gone = {element["id"]}
        todo = [element]
        while todo:
            for _, _, child in children(todo.pop()):
                gone.add(child["id"])
                todo.append(child)
        for _, _, other in walk(self.document):
            for name, value in list(other.items()):
                if name in SINGLE and value in gone:
                    del other[name]
                elif isinstance(value, list) and value and isinstance(value[0], int):
                    other[name] = [one for one in value if one not in gone]
        return element

    def add(self):
        owner = self.pick("class")
        if not owner:
            return None
        self.last += 1
        owner.setdefault("attributes", []).append({"id": self.last, "line": self.last, "name": self.fresh_name(),
                                                   "visibility": "private", "position": 77})
        return owner

    def move(self):
        element = self.pick("class")
        target = self.pick("package", fits=lambda p: element and p is not self.owner_of(element))
        if not target:
            return None
        home = self.owner_of(element)["elements"]
        home[:] = [one for one in home if one is not element]
        target.setdefault("elements", []).append(element)
        return element

    def reorder(self):
        for _, _, element in walk(self.document):
            for name in LISTS:
                if name != "arguments":
                    self.chance.shuffle(element.get(name, []))
        return self.document


EDITS = ["rename_class", "rename_attribute", "rename_operation", "retype", "document_it", "stereotype", "multiplicity",
         "abstract", "remove", "add", "move", "reorder"]


class Test:
    def __init__(self, petal, folder):
        self.petal, self.folder, self.faults = petal, folder, []
        self.with_quids = self.without = self.found = 0

    def run(self, *arguments):
        ended = subprocess.run([self.petal, *arguments], capture_output=True, check=False)
        return ended.returncode, ended.stdout

    def report(self, old, new, *options):
        status, output = self.run("diff", "-q", old, new, "-f", "json", *options)
        if status != 0:
            self.faults.append(f"diff {old} {new}: ends with {status}")
            return None
        return json.loads(output)

    def put(self, name, document):
        path = os.path.join(self.folder, name)
        pathlib.Path(path).write_text(json.dumps(document))
        return path

    def document(self, model):
        """The model as JSON, with the ids in the lines; None if it cannot be imported."""
        status, output = self.run("import", "-q", "-f", "json", "-O", "places=true", "--log-level", "FATAL", model)
        if status != 0:
            return None
        document = json.loads(output)
        seen = set()
        for _, _, element in walk(document):
            if element["id"] in seen:
                return None  # two owners: the ids do not tell
            seen.add(element["id"])
            element["line"] = element["id"]
        return document

    def mutate(self, model, count):
        document = self.document(model)
        if document is None:
            return
        bare = json.loads(json.dumps(document))
        for _, _, element in walk(bare):
            element.pop("quid", None)
        quidless = sum("quid" not in e for k, _, e in walk(document) if k not in ("type", "argument", "key"))
        for number in range(count):
            for edit in EDITS:
                for original in (document, bare):
                    changed = json.loads(json.dumps(original))
                    element = getattr(Editor(changed, random.Random(f"{os.path.basename(model)} {number} {edit}")), edit)()
                    if element is not None:
                        self.compare(model, edit, original, changed, element, original is document)
        # all quids new: nothing has changed, and petal says how it knows
        fresh = json.loads(json.dumps(document))
        for _, _, element in walk(fresh):
            if "quid" in element:
                element["quid"] = format((int(element["quid"], 16) * 7 + 5) % 2 ** 48, "012X")
        report = self.report(self.put("old.json", document), self.put("new.json", fresh))
        if report and (report["changes"] or (quidless == 0 and report["summary"]["matchedBy"] != "name")):
            self.faults.append(f"{model}: new quids: {report['changes'][:2]}")

    def compare(self, model, edit, old, new, element, has_quids):
        report = self.report(self.put("old.json", old), self.put("new.json", new))
        if report is None:
            return
        want, got = expected(old, new), told(report)
        sums = report["summary"]
        if sums["old"]["elements"] - sums["removed"] + sums["added"] != sums["new"]["elements"]:
            self.faults.append(f"{model}: {edit}: {sums}")
        if has_quids and ("quid" in element or edit in ("add", "reorder")):
            self.with_quids += 1
            if want != got:
                self.faults.append(f"{model}: {edit}: missing {list((want - got).items())[:3]}, "
                                   f"too many {list((got - want).items())[:3]}")
            self.mirror(model, edit, report)
        elif not has_quids and edit != "move":  # a move is known by its quid alone
            self.without += 1
            self.found += want == got
            if want != got and os.environ.get("MUTATIONS_SHOWN"):
                print(f"{model}: {edit} without quids: {element['name']}: {list((want - got).items())[:2]} "
                      f"{list((got - want).items())[:2]}")

    def mirror(self, model, edit, report):
        back = self.report(os.path.join(self.folder, "new.json"), os.path.join(self.folder, "old.json"))

        def key(change, mirrored):
            stem, _, end = change["rule"].rpartition("-")
            sides = ("new", "old") if mirrored else ("old", "new")
            ends = ("to", "from") if mirrored else ("from", "to")
            return (stem + "-" + (MIRROR.get(end, end) if mirrored else end), *(str(change.get(s)) for s in sides),
                    change.get("field"), *(str(change.get(e)) for e in ends))

        if back and collections.Counter(key(c, True) for c in report["changes"]) != collections.Counter(
                key(c, False) for c in back["changes"]):
            self.faults.append(f"{model}: {edit}: backwards is not the mirror")

    def change_files(self, model):
        """Layout and units, which documents do not show."""
        raw = pathlib.Path(model).read_bytes()
        moved = re.sub(rb"(\blocation\s+)\((\d+), (\d+)\)", lambda m: m[1] + b"(" + m[3] + b", " + m[2] + b")", raw)
        new = os.path.join(self.folder, "new.mdl")
        pathlib.Path(new).write_bytes(moved)
        if moved != raw and self.report(model, new)["changes"]:
            self.faults.append(f"{model}: layout is a change")
        shown = self.report(model, new, "--show", "layout")["changes"]
        if moved != raw and not any(c["rule"] == "layout-changed" for c in shown):
            self.faults.append(f"{model}: layout is not shown")
        if any(c["rule"] != "layout-changed" for c in shown):
            self.faults.append(f"{model}: layout shows {shown[:1]}")

    def split_into_units(self):
        """A package, once in the model's file and once in its own."""
        package = ('(object Class_Category "P" {} quid "4A0000000001" logical_models (list unit_reference_list '
                   '(object Class "C" quid "4A0000000002" class_attributes (list class_attribute_list '
                   '(object ClassAttribute "a" quid "4A0000000003" type "int")))))')
        head = "(object Petal version 42 charSet 0)\n"
        design = ('(object Design "Logical View" root_category (object Class_Category "Logical View" quid "4A0000000009" '
                  'logical_models (list unit_reference_list {})))\n')
        for name, text in (("one.mdl", head + design.format(package.format(""))),
                           ("two.mdl", head + design.format('(object Class_Category "P" is_unit TRUE is_loaded FALSE '
                                                            'file_name "p.cat" quid "4A0000000001")')),
                           ("p.cat", head + package.format("is_unit TRUE is_loaded TRUE"))):
            pathlib.Path(self.folder, name).write_text(text)
        one, two = (os.path.join(self.folder, name) for name in ("one.mdl", "two.mdl"))
        if self.report(one, two)["changes"]:
            self.faults.append(f"units: {self.report(one, two)['changes'][:2]}")
        rules = {c["rule"] for c in self.report(one, two, "--show", "units")["changes"]}
        if rules != {"unit-changed"}:
            self.faults.append(f"units: {rules}")


def main(petal, real, *examples):
    models = [(model, 6) for model in examples]
    found = sorted(str(path) for path in pathlib.Path(real).rglob("*.mdl")) if real and os.path.isdir(real) else []
    if not found:
        print("no real models: only the examples are tried")
    models += [(model, 1) for model in found if os.path.getsize(model) < 2_000_000]
    with tempfile.TemporaryDirectory() as folder:
        test = Test(petal, folder)
        for model, count in models:
            test.mutate(model, count)
        for example in examples:
            test.change_files(example)
        test.split_into_units()
    share = test.found / max(test.without, 1)
    if share < FOUND_WITHOUT_QUIDS:
        test.faults.append(f"without quids only {test.found} of {test.without} edits are found")
    print("\n".join(test.faults[:40]))
    print(f"edits: {test.with_quids} with quids, {test.without} without, of which {test.found} were found; "
          f"faults: {len(test.faults)}")
    return 1 if test.faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
