"""The sections of docs/performance.md in their order, by the names that `bench/run --only` takes."""

import aims
import archives
import catalog
import growth
import imports
import notation
import outputs
import page
import passes
import postgresql
import scanner
import shapes
import sizes
import start
from programs import has
from report import Section

CATALOGUED = 4  # the share of the megabytes of an import


def fewer(asked):
    """Rounds for what takes long."""
    return max(1, asked.rounds // 2)


def beside_flex(title, measure):
    """The section, if there is a bench of the scanner."""
    if not has("scan-bench"):
        return Section(title, ["Not measured: there is no bench of the scanner, which needs flex."])
    return measure()


# Each returns the sections that it measures.
SECTIONS = {
    "scanner": lambda asked: [beside_flex("The scanner alone", lambda: scanner.section(asked.scanned, asked.rounds))],
    "import": lambda asked: [beside_flex("The whole import", lambda: imports.section(asked.imported, asked.rounds))],
    "aims": lambda asked: [aims.section(asked.imported, asked.before, asked.rounds)],
    "sizes": lambda asked: [sizes.section(asked.largest, asked.rounds)],
    "shapes": lambda asked: [shapes.section(asked.imported, asked.portion, fewer(asked))],
    "growth": lambda asked: growth.sections(asked.portion, fewer(asked)),
    "passes": lambda asked: [passes.section(asked.imported, ("plain", "dense", "types"))],
    "outputs": lambda asked: [outputs.section(asked.imported, asked.rounds)],
    "catalog": lambda asked: [catalog.section(max(4, asked.imported // CATALOGUED), fewer(asked))],
    "postgresql": lambda asked: [postgresql.section(max(4, asked.imported // CATALOGUED), fewer(asked))],
    "page": lambda asked: [page.section(asked.rounds)],
    "start": lambda asked: [start.section(max(20, asked.rounds))],
    "archives": lambda asked: [archives.section(asked.archived, asked.before, fewer(asked))],
    "notation": lambda asked: [notation.section(asked.imported, asked.rounds)],
}
