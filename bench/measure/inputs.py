"""The texts that are measured. They lie in build/bench-data and are made when first needed. Their names tell what they
were made of, so that one is made anew when that has changed."""

import functools
import hashlib
import json
import os
import re
import shutil
import subprocess
from pathlib import Path

from programs import DATA, program

MEGABYTE = 1_000_000
SIZES = (1, 4, 16, 64, 256, 1024)  # megabytes of ordinary models; time is compared with that of the second
REAL_MODELS = "PETAL_REAL_MODELS"


# What has an identity in a model, as make-model calls it.
OBJECTS = (
    "packages", "classes", "attributes", "operations", "arguments", "associations", "roles", "generalizations",
    "realizations", "dependencies", "candidate keys", "foreign keys", "diagrams", "declared types",
)


def mark(data):
    return hashlib.sha256(data).hexdigest()[:12]


def kept(name, suffix, origin, make):
    """The file or folder of that name and origin; `make` fills it at the path it is given. One of another origin goes."""
    path = DATA / f"{name}.{origin}{suffix}"
    if not path.exists():
        DATA.mkdir(parents=True, exist_ok=True)
        for old in DATA.glob(f"{name}.*"):
            shutil.rmtree(old) if old.is_dir() else old.unlink()
        unfinished = path.with_suffix(".part")
        make(unfinished)
        unfinished.rename(path)
    return path


@functools.cache
def maker_mark():
    return mark(Path(program("make-model")).read_bytes())


def model(shape, megabytes=None, count=None):
    """A made model file, of that size or with so many things. What it holds stands beside it."""
    wanted = ["--megabytes", str(megabytes)] if count is None else ["--count", str(count)]
    name = f"{shape}-{megabytes}MB" if count is None else f"{shape}-{count}"

    def make(path):
        command = [program("make-model"), shape, *wanted, "-o", str(path)]
        told = subprocess.run(command, check=True, stderr=subprocess.PIPE).stderr
        path.with_suffix(".json").write_bytes(told)

    return kept(name, ".mdl", maker_mark(), make)


def remove(path):
    """Removes a made model, whose likes are too big to be kept."""
    path.with_suffix(".json").unlink(missing_ok=True)
    path.unlink()


def objects(path):
    """How many objects the model of a made file has."""
    counts = json.loads(path.with_suffix(".json").read_text(encoding="ascii"))
    return sum(counts.get(name, 0) for name in OBJECTS)


def size(path):
    """In megabytes."""
    return path.stat().st_size / MEGABYTE


def found_models():
    """The model files in the folder that PETAL_REAL_MODELS names; none when it is not set. Empty files are left out.
    Raises ValueError when it is set to what is of no use: made texts must not pass for real ones."""
    folder = os.environ.get(REAL_MODELS, "")
    if not folder:
        return []
    if not os.path.isabs(folder):
        raise ValueError(f"{REAL_MODELS} must be an absolute path: {folder}")
    if not os.path.isdir(folder):
        raise ValueError(f"{REAL_MODELS} names no folder: {folder}")
    files = [
        Path(path, name)
        for path, _, names in os.walk(folder)
        for name in names
        if name.lower().endswith((".mdl", ".cat"))
    ]
    found = sorted(file for file in files if file.stat().st_size > 0)
    if not found:
        raise ValueError(f"{REAL_MODELS} names a folder without models: {folder}")
    return found


@functools.cache
def real_files():
    return found_models()


@functools.cache
def matches_per_byte(*paths):
    """How many keywords the scanner finds in files, for each byte."""
    done = subprocess.run([program("scan-bench"), "-n", "1", *paths], check=True, capture_output=True, text=True)
    matches, length = re.search(r"(\d+) matches in (\d+) bytes", done.stdout).groups()
    return int(matches) / int(length)


def matches_per_megabyte(*paths):
    """The same as words for a reader."""
    return f"{matches_per_byte(*paths) * MEGABYTE:,.0f} matches per MB"


def state_of(files):
    """A mark that changes with the files."""
    states = [(str(file), file.stat().st_size, file.stat().st_mtime_ns) for file in files]
    return mark(repr(states).encode())


def repeated(name, files, megabytes):
    """The files one after the other, over and over, up to that size."""

    def make(path):
        once = b"".join(file.read_bytes() for file in files)
        with open(path, "wb") as out:
            while out.tell() < megabytes * MEGABYTE:
                out.write(once)

    return kept(f"{name}-{megabytes}MB", ".txt", state_of(files), make)


def made_texts(megabytes):
    """Texts for the scanner, by how many keywords are in them."""
    return {shape: model(shape, megabytes) for shape in ("plain", "dense", "sparse")}


def scanner_texts(megabytes):
    """The same of real models, if there are any."""
    real = real_files()
    if not real:
        return made_texts(megabytes)
    by_density = sorted(real, key=matches_per_byte)
    chosen = {"plain": real, "dense": by_density[-1:], "sparse": by_density[:1]}
    return {name: repeated(f"real-{name}", files, megabytes) for name, files in chosen.items()}
