"""What a catalogue costs, beside the shell of SQLite that loads the same rows."""

import sqlite3
import subprocess

from inputs import model, size
from programs import DATA, has, import_of, program
from report import Goal, Section, table
from timing import in_turns, ratio

BOUND = 1.3  # times the shell, which finds its rows made
SETTINGS = "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL; PRAGMA cache_size = -65536;"


def statements(catalogue, condition):
    with sqlite3.connect(catalogue) as opened:
        rows = opened.execute(f"SELECT sql FROM sqlite_schema WHERE sql <> '' AND {condition}").fetchall()
    return "".join(f"{sql};\n" for (sql,) in rows)


def load_script(catalogue, folder):
    """Writes the rows of a catalogue as CSV, and a script for the shell that makes the same catalogue of them."""
    folder.mkdir(exist_ok=True)
    tables = "type = 'table' AND name NOT LIKE 'search%' AND name NOT LIKE 'sqlite%'"
    with sqlite3.connect(catalogue) as opened:
        names = [name for (name,) in opened.execute(f"SELECT name FROM sqlite_schema WHERE {tables}")]
    imports = ""
    for name in names:
        csv = folder / f"{name}.csv"
        with open(csv, "wb") as out:
            subprocess.run(["sqlite3", "-csv", catalogue, f'SELECT * FROM "{name}"'], check=True, stdout=out)
        imports += f".import --csv {csv} {name}\n"
    script = folder / "load.sql"
    script.write_text(
        f"{SETTINGS}\n{statements(catalogue, tables)}BEGIN;\n{imports}COMMIT;\nBEGIN;\n"
        + statements(catalogue, "(type = 'index' OR name = 'search')")
        + "INSERT INTO search (search) VALUES ('rebuild');\nCOMMIT;\n"
        "PRAGMA analysis_limit = 400; ANALYZE; PRAGMA journal_mode = DELETE;\n",
        encoding="utf-8",
    )
    return script


def anew(file, command):
    return ["sh", "-c", f"rm -f {file} && {command}"]


def section(megabytes, rounds):
    title = "A catalogue"
    if not has("sqlite3"):
        return Section(title, ["Not measured: there is no shell of SQLite."])
    path = model("plain", megabytes)
    ours, theirs = DATA / "ours.db", DATA / "theirs.db"
    make = anew(ours, f"{program('petal')} catalog -q {path} -o {ours}")
    subprocess.run(make, check=True)
    script = load_script(ours, DATA / "csv")
    runs = in_turns(
        {
            "petal catalog": make,
            "sqlite3, the same rows from CSV": anew(theirs, f"sqlite3 {theirs} < {script}"),
            "petal import, nothing written": import_of(path),
        },
        rounds,
    )
    rows = [
        [name, f"{run.cpu * 1000 / size(path):.2f}", f"{run.peak / 1e6:.1f} MB", f"{run.spread:.1%}"]
        for name, run in runs.items()
    ]
    times = ratio(runs["petal catalog"], runs["sqlite3, the same rows from CSV"])
    return Section(
        title,
        [
            "An ordinary model into a new catalogue: the import, the rows, their writing, the indexes and the search. "
            "The shell of SQLite makes the same file of rows that are there.",
            table(["command", "ms/MB", "memory", "spread"], rows),
        ],
        [Goal("a catalogue, times the shell's load of the same rows", times, BOUND, is_most=True)],
        rounds,
    )
