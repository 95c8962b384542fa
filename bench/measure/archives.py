"""What an import of many small models takes: in one folder and in nested ones, with outputs and without."""

import re
import shutil

from inputs import kept, mark, model, real_files
from programs import DATA, program
from report import Goal, Section, table
from timing import clock_ratio, in_turns, ratio

LARGEST = 50_000  # bytes of a real model that is taken
IN_EACH = 100  # models in each nested folder
MADE = 5
LOSING = 2  # of the made ones, which name a unit that is missing
LOST_UNIT = (b"\n\t    (object Class_Category \"lost\"\n\t\tis_unit \tTRUE\n\t\tis_loaded \tFALSE\n"
             b"\t\tfile_name \t\"$CURDIR\\\\lost.cat\"\n\t\tquid \t\"5B0FFFFFFFFF\")")
UNIT_LIST = re.compile(rb"root_category.*?logical_models \t\(list unit_reference_list", re.DOTALL)
NOTHING, OUTPUTS = "no output", "JSON"
FORMS = {NOTHING: ["--format", "none"], OUTPUTS: ["-o", str(DATA / "archive-output")]}
NEW, BEFORE = "petal", "before"
TIME_BOUND = {NOTHING: 0.35, OUTPUTS: 0.5}  # beside the petal before
CLOCK_BOUND = 0.5
FAULT_BOUND = 50  # for a model: three times those of a process that is forked and ends


def made_models():
    text = model("plain", count=1).read_bytes()
    losing = UNIT_LIST.sub(lambda found: found[0] + LOST_UNIT, text, count=1)
    return [losing if number < LOSING else text for number in range(MADE)]


def small_models():
    """Small real models, some of which lose units, or made ones."""
    files = [path for path in real_files() if path.suffix == ".mdl" and path.stat().st_size <= LARGEST]
    return [path.read_bytes() for path in files] or made_models()


def archive(name, count, folder_of):
    """A folder with that many models; `folder_of` says in which folder within it a number is."""
    texts = small_models()
    origin = mark(b"".join(texts))

    def make(path):
        for number in range(count):
            folder = path / folder_of(number)
            folder.mkdir(parents=True, exist_ok=True)
            (folder / f"m{number:06}.mdl").write_bytes(texts[number % len(texts)])

    return kept(f"archive-{name}-{count}", "", origin, make)


def commands(folder, form, before):
    programs = {NEW: program("petal")} | ({BEFORE: before} if before else {})
    return {name: [path, "import", "-q", str(folder), *FORMS[form]] for name, path in programs.items()}


def section(count, before, rounds):
    rows = []
    goals = []
    archives = {
        "one folder": archive("flat", count, lambda number: ""),
        "nested folders": archive("nested", count, lambda number: f"{number // IN_EACH // 10}/{number // IN_EACH % 10}"),
    }
    for kind, folder in archives.items():
        for form in FORMS:
            runs = in_turns(commands(folder, form, before), rounds)
            now = runs[NEW]
            row = [f"{kind}, {form}", f"{now.cpu * 1000 / count:.2f}", f"{now.clock * 1000 / count:.2f}",
                   f"{now.faults / count:.0f}"]
            if form == NOTHING:
                goals.append(Goal(f"{kind}, {form}, page faults for a model", now.faults / count, FAULT_BOUND,
                                  is_most=True))
            if before:
                was = runs[BEFORE]
                row += [f"{was.cpu * 1000 / count:.2f}", f"{was.clock * 1000 / count:.2f}",
                        f"{ratio(now, was):.2f}", f"{clock_ratio(now, was):.2f}"]
                goals.append(Goal(f"{kind}, {form}, processor time beside the petal before", ratio(now, was),
                                  TIME_BOUND[form], is_most=True))
                if form == OUTPUTS:
                    goals.append(Goal(f"{kind}, {form}, time on the clock beside the petal before",
                                      clock_ratio(now, was), CLOCK_BOUND, is_most=True))
            rows.append(row)
            shutil.rmtree(DATA / "archive-output", ignore_errors=True)
    heads = ["archive", "ms of the processor", "ms on the clock", "page faults"]
    heads += ["ms of the processor before", "ms on the clock before", "ratio", "ratio on the clock"] if before else []
    sizes = [len(text) for text in small_models()]
    return Section(
        "Archives",
        [
            f"`petal import -q FOLDER` of {count:,} models of {sum(sizes) / len(sizes) / 1000:.0f} KB, of which some"
            " name units that are missing; figures for one model. Outputs are brought to the disk, so their time on the"
            " clock is that of the disk, too; from the second round on they replace those of the round before."
            + (" Before is another petal, given with `--before`." if before else ""),
            table(heads, rows),
        ],
        goals,
        rounds,
    )
