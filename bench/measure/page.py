"""The page of a large model in a browser: its size, and how long a reader waits."""

import contextlib
import re
import shutil
import statistics
import sys
import time
from dataclasses import dataclass
from pathlib import Path

from inputs import kept, mark, model
from programs import DATA, import_of
from report import Goal, Section, table
from timing import run

sys.path.append("/usr/lib/python3/dist-packages")  # for another Python than Debian's

TITLE = "The page of a large model"
CLASSES = 10_000
SIZE_BOUND = 4.0  # megabytes, pictures aside
READY_BOUND = 1000.0  # milliseconds
KEY_BOUND = 50.0  # milliseconds
HEAP_BOUND = 100.0  # megabytes

QUERIES = ("Customer4711Record", "compute1", "department", "CR", "zzz")

# Notes when the page is shown. The browser runs it before the scripts of the page.
NOTE_READY = """
new MutationObserver((changes, observer) => {
  const shell = document.getElementById("shell");
  if (shell && !shell.hidden && document.querySelector("#main h1")) {
    observer.disconnect();
    window.readyAt = performance.now();
  }
}).observe(document, {subtree: true, childList: true, attributes: true});
"""

# Types the texts key by key, and returns the milliseconds of each until its hits have their places.
TYPE = """
const field = document.querySelector("input[type=search]");
const times = [];
for (const text of arguments[0]) {
  for (let length = 1; length <= text.length; length++) {
    const start = performance.now();
    field.focus();
    field.value = text.slice(0, length);
    field.dispatchEvent(new Event("input", {bubbles: true}));
    document.body.getBoundingClientRect();
    times.push(performance.now() - start);
  }
}
return times;
"""


def members():
    """Classes with four attributes and three operations each, in packages of a hundred, without diagrams."""

    def one_class(number):
        attributes = "".join(
            f'(object ClassAttribute "{name}" quid "6{at}{number:010X}" type "{kind}")\n'
            for at, (name, kind) in enumerate(
                (("name", "String"), ("number", "int"), ("since", "Date"), (f"special{number}", "double"))
            )
        )
        operations = "".join(
            f'(object Operation "compute{at}" quid "5{at}{number:010X}" result "int")\n' for at in range(3)
        )
        above = number - number % 10
        supertype = (
            f'superclasses (list inheritance_relationship_list (object Inheritance_Relationship quid "4E{number:010X}"'
            f' supplier "Logical View::Package{above // 100}::Customer{above}Record" quidu "4A{above:010X}"))'
        )
        return (
            f'(object Class "Customer{number}Record" quid "4A{number:010X}"\n'
            f'documentation "The records that department {number} keeps about its customers."\n'
            f"{supertype if number % 10 else ''} operations (list Operations {operations})\n"
            f"class_attributes (list class_attribute_list {attributes}))\n"
        )

    def make(path):
        with open(path, "w", encoding="ascii") as out:
            out.write('(object Petal version 42)\n(object Design "Logical View" is_unit TRUE is_loaded TRUE\n')
            out.write('root_category (object Class_Category "Logical View" quid "490000000001"\n')
            out.write("logical_models (list unit_reference_list\n")
            for package in range(CLASSES // 100):
                out.write(f'(object Class_Category "Package{package}" quid "4D{package:010X}"\n')
                out.write("logical_models (list unit_reference_list\n")
                out.writelines(one_class(package * 100 + at) for at in range(100))
                out.write("))\n")
            out.write(")))\n")

    return kept(f"page-{CLASSES}", ".mdl", mark(Path(__file__).read_bytes()), make)


@dataclass
class Figures:
    """What one page takes: medians of the rounds."""

    size: float  # megabytes, pictures aside
    pictures: float  # megabytes
    writing: float  # seconds of the processor
    ready: float  # milliseconds
    key: float  # milliseconds
    slowest_key: float
    heap: float  # megabytes


@contextlib.contextmanager
def browser():
    """A browser without a window; None where there is none."""
    try:
        from selenium import webdriver
        from selenium.common.exceptions import WebDriverException
        from selenium.webdriver.chrome.service import Service
    except ImportError:
        yield None
        return
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                     "--window-size=1400,1000", "--disable-background-networking", "--disable-component-update"):
        options.add_argument(argument)
    try:
        driver = webdriver.Chrome(service=Service(shutil.which("chromedriver") or "chromedriver"), options=options)
    except WebDriverException:
        yield None
        return
    try:
        driver.set_script_timeout(60)
        driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": NOTE_READY})
        yield driver
    finally:
        driver.quit()


def opened(driver, page):
    """Opens a page; the milliseconds until it is shown."""
    driver.get("about:blank")
    driver.get(page.as_uri())
    for _ in range(3000):
        ready = driver.execute_script("return window.readyAt")
        if ready is not None:
            return ready
        time.sleep(0.02)
    raise TimeoutError(f"{page} is not shown within a minute")


def heap(driver):
    driver.execute_cdp_cmd("HeapProfiler.collectGarbage", {})
    return driver.execute_cdp_cmd("Runtime.getHeapUsage", {})["usedSize"] / 1e6


def figures(driver, path, rounds):
    page = DATA / f"{path.stem}.html"
    writing = statistics.median(run([*import_of(path, "html"), "-o", str(page)]).cpu for _ in range(rounds))
    text = page.read_bytes()
    pictures = sum(len(one) for one in re.findall(rb'<script type="image/svg\+xml">.*?</script>\n', text, re.DOTALL))
    ready, keys, heaps = [], [], []
    for _ in range(rounds):
        ready.append(opened(driver, page))
        keys.append(driver.execute_script(TYPE, QUERIES))
        heaps.append(heap(driver))
    page.unlink()
    by_key = [statistics.median(times) for times in zip(*keys)]
    return Figures((len(text) - pictures) / 1e6, pictures / 1e6, writing, statistics.median(ready),
                   statistics.median(by_key), max(by_key), statistics.median(heaps))


def section(rounds):
    with browser() as driver:
        if driver is None:
            return Section(TITLE, ["Not measured: there is no Chromium, chromium-driver or python3-selenium."])
        told = f"{driver.capabilities['browserName']} {driver.capabilities['browserVersion']}"
        paths = {
            f"{CLASSES:,} classes with 40,000 attributes and 30,000 operations": members(),
            f"as real models are, {CLASSES:,} packages and classes": model("plain", count=CLASSES),
        }
        found = {name: figures(driver, path, rounds) for name, path in paths.items()}
    rows = [
        [name, f"{one.size:.2f}", f"{one.pictures:.1f}", f"{one.writing:.2f}", f"{one.ready:.0f}", f"{one.key:.1f}",
         f"{one.slowest_key:.0f}", f"{one.heap:.0f}"]
        for name, one in found.items()
    ]
    whole = next(iter(found.values()))
    return Section(
        TITLE,
        [
            f"Pages of models (`petal import -f html`) in {told} without a window, opened from the disk. Times are of"
            f" the clock, those of writing of the processor. A key is one of a text typed into the search, among them"
            f" {', '.join(f'`{query}`' for query in QUERIES)}; its time ends when the hits have their places.",
            table(["model", "MB", "MB of pictures", "s to write", "ms until shown", "ms a key", "slowest", "MB of heap"],
                  rows),
        ],
        [
            Goal(f"the page of {CLASSES:,} classes", whole.size, SIZE_BOUND, is_most=True, unit=" MB"),
            Goal("until it is shown", whole.ready, READY_BOUND, is_most=True, unit=" ms"),
            Goal("the slowest key", whole.slowest_key, KEY_BOUND, is_most=True, unit=" ms"),
            Goal("its heap", whole.heap, HEAP_BOUND, is_most=True, unit=" MB"),
        ],
        rounds,
    )
