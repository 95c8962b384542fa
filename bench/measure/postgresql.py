"""What a catalogue in PostgreSQL costs, beside psql that copies the same rows into the same tables."""

import contextlib
import os
import pwd
import shutil
import subprocess
import tempfile
from pathlib import Path

from inputs import model, size
from programs import DATA, import_of, program
from report import Goal, Section, table
from timing import clock_ratio, in_turns

TITLE = "A catalogue in PostgreSQL"
BOUND = 1.3  # times psql, which finds its rows made
OURS, THEIRS = "ours", "theirs"
COLUMNS = """SELECT string_agg(quote_ident(column_name), ',' ORDER BY ordinal_position) FROM information_schema.columns
WHERE table_schema = 'public' AND table_name = '{table}' AND is_generated = 'NEVER'"""


def programs():
    """The folder of the newest server that is installed; None if there is none."""
    found = sorted(Path("/usr/lib/postgresql").glob("*/bin/initdb"), key=lambda path: int(path.parts[-3]))
    return found[-1].parent if found else None


@contextlib.contextmanager
def server(folder):
    """A server of its own, its settings those of an installation, reached by a socket in the folder that this gives."""
    place = Path(tempfile.mkdtemp(prefix="petal-pg-"))
    user = []
    if os.getuid() == 0:  # the server does not run as root
        owner = pwd.getpwnam("postgres")
        os.chown(place, owner.pw_uid, owner.pw_gid)
        user = ["setpriv", f"--reuid={owner.pw_uid}", f"--regid={owner.pw_gid}", "--clear-groups"]

    def command(name, *words):
        subprocess.run([*user, folder / name, "-D", place / "data", *words], check=True, cwd="/",
                       stdout=subprocess.DEVNULL)

    command("initdb", "-A", "trust", "-U", "bench", "-E", "UTF8", "--locale=C.UTF-8", "--no-sync")
    command("pg_ctl", "-l", place / "log", "-w", "-o", f"-k {place} -c listen_addresses=''", "start")
    try:
        yield place
    finally:
        command("pg_ctl", "-m", "immediate", "-w", "stop")
        shutil.rmtree(place, ignore_errors=True)


def words(place, database):
    return f"host={place} user=bench dbname={database}"


def asked(place, database, sql):
    """What a statement answers, a line for each row."""
    command = ["psql", "-X", "-q", "-At", "-v", "ON_ERROR_STOP=1", "-c", "SET client_min_messages = warning", "-c", sql, words(place, database)]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()


def empty(place):
    """Makes both databases anew, and brings that to the disk: it is not to be measured."""
    for database in (OURS, THEIRS):
        asked(place, "postgres", f"DROP DATABASE IF EXISTS {database}")
        asked(place, "postgres", f"CREATE DATABASE {database}")
    asked(place, "postgres", "CHECKPOINT")


def load_scripts(place, folder):
    """Writes the rows of our catalogue as psql copies them, and scripts that make the same catalogue of them."""
    folder.mkdir(exist_ok=True)
    copies = ""
    for name in asked(place, OURS, "SELECT tablename FROM pg_tables WHERE schemaname = 'public'"):
        columns = asked(place, OURS, COLUMNS.format(table=name))[0]
        rows = folder / f"{name}.txt"
        asked(place, OURS, f"\\copy (SELECT {columns} FROM {name}) TO '{rows}'")
        copies += f"\\copy {name}({columns}) FROM '{rows}'\n"
    (folder / "rows.sql").write_text(f"SET search_path = public;\n{copies}", encoding="utf-8")
    scripts = [folder / "pre-data.sql", folder / "rows.sql", folder / "post-data.sql"]
    for script in (scripts[0], scripts[2]):
        dump = ["pg_dump", "-s", f"--section={script.stem}", "-f", script, words(place, OURS)]
        subprocess.run(dump, check=True)
    return scripts


def section(megabytes, rounds):
    folder = programs()
    if folder is None or not shutil.which("psql"):
        return Section(TITLE, ["Not measured: PostgreSQL is not installed."])
    path = model("plain", megabytes)
    petal, psql = "petal catalog", "psql, the same rows"
    with server(folder) as place:
        empty(place)
        make = [program("petal"), "catalog", "-q", str(path), "-o", words(place, OURS)]
        subprocess.run(make, check=True)
        files = [word for script in load_scripts(place, DATA / "copied") for word in ("-f", str(script))]
        load = ["psql", "-X", "-q", "-1", *files, "-c", "ANALYZE", words(place, THEIRS)]
        commands = {petal: make, psql: load, "petal import, nothing written": import_of(path)}
        runs = in_turns(commands, rounds, lambda: empty(place))
    rows = [[name, f"{run.clock * 1000 / size(path):.2f}", f"{run.cpu * 1000 / size(path):.2f}"]
            for name, run in runs.items()]
    return Section(
        TITLE,
        [
            "An ordinary model into a new database of a server that was made for this. psql makes the same tables,"
            " copies the same rows, which it finds in files, and makes the same indexes and references. The processor"
            " time is that of the client alone.",
            table(["command", "ms/MB on the clock", "ms/MB of the processor"], rows),
        ],
        [Goal("a catalogue in PostgreSQL, times psql on the clock", clock_ratio(runs[petal], runs[psql]), BOUND,
              is_most=True)],
        rounds,
    )
