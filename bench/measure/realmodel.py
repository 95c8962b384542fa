"""One well-formed model that holds the logical view of a real one over and over, each time as a package of its own."""

import re

from inputs import MEGABYTE, kept, state_of

LOGICAL_VIEW = re.compile(rb'(\n    root_category\s+\(object Class_Category "Logical View")(.*?)(\)\r?\n    [a-z_]+ )', re.DOTALL)
CLASS = re.compile(rb'\(object Class "([^"\n]*)"')
NAMED = re.compile(
    rb'(?P<before>\(object Class |\stype\s+)"(?P<name>[^"\n]*)"|"Logical View::(?P<path>[^"\n]*)"'
    rb'|"(?P<quid>[0-9A-F]{12})"|@(?P<view>\d+)'
)
QUIDS = 1 << 48
QUID_STEP = 0x9E3779B1  # far from how the identifiers of one file differ


def copied(view, classes, number, views):
    """The logical view as the package of that number: its classes, identifiers and numbers of views are all its own,
    since an import takes what has the name of another for that one."""

    def own(name):
        return name + b"_%d" % number if name.rpartition(b"::")[2] in classes else name

    def renamed(found):
        if found["view"]:
            return b"@%d" % (int(found["view"]) + number * views)
        if found["quid"]:
            return b'"%012X"' % ((int(found["quid"], 16) + number * QUID_STEP) % QUIDS)
        if found["path"] is not None:
            return b'"Logical View::Copy%d::%s"' % (number, own(found["path"]))
        return b'%s"%s"' % (found["before"], own(found["name"]))

    return b'\n\t    (object Class_Category "Copy%d"' % number + NAMED.sub(renamed, view) + b")"


def repeated_view(text, size):
    """The model with that many bytes of copies; None when it has no logical view to be found."""
    found = LOGICAL_VIEW.search(text)
    if not found:
        return None
    begin, view, end = found.groups()
    views = 1 + max((int(number) for number in re.findall(rb"@(\d+)", view)), default=0)
    classes = set(CLASS.findall(view))
    copies = []
    written = 0
    while written < size:
        copies.append(copied(view, classes, len(copies), views))
        written += len(copies[-1])
    package = b"\n\tlogical_models \t(list unit_reference_list" + b"".join(copies) + b")"
    return text[: found.start()] + begin + package + end + text[found.end() :]


def repeated_model(file, megabytes):
    """A file of such a model; None when there can be none."""
    text = file.read_bytes()
    if not LOGICAL_VIEW.search(text):
        return None

    def make(path):
        path.write_bytes(repeated_view(text, megabytes * MEGABYTE))

    return kept(f"real-model-{megabytes}MB", ".mdl", state_of([file]), make)
