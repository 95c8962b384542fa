"""The texts that are measured. They lie in build/bench-data and are made when first needed."""

import json
import os
import re
import subprocess

from programs import DATA, program

MEGABYTE = 1_000_000


# What has an identity in a model, as make-model calls it.
OBJECTS = (
    "packages", "classes", "attributes", "operations", "arguments", "associations", "roles", "generalizations",
    "realizations", "dependencies", "candidate keys", "foreign keys", "diagrams", "declared types",
)


def model(shape, megabytes):
    """A made model file. What it holds stands beside it."""
    path = DATA / f"{shape}-{megabytes}.mdl"
    if not path.exists():
        DATA.mkdir(parents=True, exist_ok=True)
        unfinished = path.with_suffix(".part")
        command = [program("make-model"), shape, "--megabytes", str(megabytes), "-o", str(unfinished)]
        told = subprocess.run(command, check=True, stderr=subprocess.PIPE).stderr
        path.with_suffix(".json").write_bytes(told)
        unfinished.rename(path)
    return path


def objects(path):
    """How many objects the model of a made file has."""
    counts = json.loads(path.with_suffix(".json").read_text(encoding="ascii"))
    return sum(counts.get(name, 0) for name in OBJECTS)


def size(path):
    """In megabytes."""
    return path.stat().st_size / MEGABYTE


def real_files():
    """The real model files in the folder that PETAL_REAL_MODELS names; none when it names none."""
    folder = os.environ.get("PETAL_REAL_MODELS", "")
    found = []
    for path, _, names in os.walk(folder):
        found += [os.path.join(path, name) for name in names if name.endswith((".mdl", ".cat"))]
    return sorted(found)


def matches_per_byte(path):
    """How many keywords the scanner finds in a file, for each byte."""
    done = subprocess.run([program("scan-bench"), "-n", "1", path], check=True, capture_output=True, text=True)
    matches, length = re.search(r"(\d+) matches in (\d+) bytes", done.stdout).groups()
    return int(matches) / int(length)


def repeated(name, files, megabytes):
    """The files one after the other, over and over, up to that size."""
    path = DATA / f"{name}-{megabytes}.txt"
    if not path.exists():
        DATA.mkdir(parents=True, exist_ok=True)
        once = b"".join(open(file, "rb").read() for file in files)
        unfinished = path.with_suffix(".part")
        with open(unfinished, "wb") as out:
            while out.tell() < megabytes * MEGABYTE:
                out.write(once)
        unfinished.rename(path)
    return path


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
