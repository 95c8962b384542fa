"""Which pass of an import takes which share of its time."""

import re
import subprocess
from collections import Counter

from inputs import model
from programs import BUILD, DATA, has, import_of
from report import Goal, Section, marked, table

SHARE_BOUND = 35.0
SAMPLES_A_SECOND = 2000
STACK_BYTES = 32768  # of the stack that perf copies for a sample: what is further up goes unseen

# A sample belongs to the first pass that one of its functions is of. What runs within the scan is the builder's if one
# of its functions is, and the scanner's otherwise.
SCAN = ("rose::RoseLexImport", "rose::scan<")  # how the names of the functions that scan begin
PASSES = (
    ("types", {"rose::setRoseTypes"}),
    ("completion and validation", {"rose::checkToBeClasses", "rose::ValidateModel"}),
    ("transcoding", {"KelObject::transcode", "KelMetadataOrigin::transcode"}),
    ("clean-up", {"rose::cleanup"}),
    ("search for controlled units", {"units::mayNeedAssembly"}),
)
SCANNING, BUILDING, REST = "scanning", "building", "start and end of the process"


def builder_functions():
    """The names of all functions of the builder."""
    archive = BUILD / "archives" / "librose_builder.a"
    listed = subprocess.run(["nm", "-C", "--defined-only", archive], capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"^[0-9a-f]+ [TtW] (rose::[^(\n]+)", listed, re.MULTILINE))


def stacks_of(script):
    """The functions of each sample that perf tells of."""
    samples = script.strip().split("\n\n")
    return [set(re.findall(r"^\s*[0-9a-f]+ (.*?)(?: \(inlined\))?$", one, re.MULTILINE)) for one in samples if one]


def scans(functions):
    return any(function.startswith(SCAN) for function in functions)


def pass_of(functions, builder):
    for name, starts in PASSES:
        if functions & starts:
            return name
    if not scans(functions):
        return REST
    return BUILDING if functions & builder else SCANNING


def shares_in(stacks, builder):
    """The share of each pass, in percent; none when no sample is of the scan, which is then out of perf's sight."""
    if not any(scans(functions) for functions in stacks):
        return {}
    counted = Counter(pass_of(functions, builder) for functions in stacks)
    names = [SCANNING, BUILDING, *(name for name, _ in PASSES), REST]
    return {name: 100 * counted[name] / len(stacks) for name in names}


def shares(path):
    """The share of each pass; none when perf may not take samples, or sees too little of the stack."""
    subprocess.run(import_of(path), capture_output=True, check=False)  # reads the file into the system's cache
    recorded = DATA / "perf.data"
    record = ["perf", "record", "-q", "-F", str(SAMPLES_A_SECOND), "--call-graph", f"dwarf,{STACK_BYTES}"]
    done = subprocess.run([*record, "-o", str(recorded), *import_of(path)], capture_output=True, check=False)
    if done.returncode != 0:
        return {}
    script = ["perf", "script", "-i", str(recorded), "-F", "ip,sym"]
    told = subprocess.run(script, capture_output=True, text=True, check=True).stdout
    recorded.unlink()
    return shares_in(stacks_of(told), builder_functions())


def section(megabytes, shapes):
    title = "The passes of an import"
    found = {shape: shares(model(shape, megabytes)) for shape in shapes} if has("perf") else {}
    if not all(found.values()) or not found:
        return Section(title, ["Not measured: perf is not there, may not take samples on this machine, or does not see the scan."])
    rows = [[name] + [marked(found[shape][name], SHARE_BOUND) for shape in shapes] for name in found["plain"]]
    largest = max(found["plain"], key=found["plain"].get)
    return Section(
        title,
        [
            f"Shares of the time in percent, by {SAMPLES_A_SECOND} samples a second of one import each, of models of {megabytes} MB. The"
            " scanner's share holds reading the file and taking the values out of what has matched.",
            table(["pass", *shapes], rows),
        ],
        [
            Goal(f"the largest pass of the ordinary model ({largest})", found["plain"][largest], SHARE_BOUND,
                 is_most=True, unit=" %")
        ],
    )
