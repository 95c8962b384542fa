"""Draws how figures grow with the size of a model."""

import subprocess

from programs import ROOT

FILE = ROOT / "docs" / "pictures" / "growth.svg"
WIDTH, HEIGHT = 960, 400  # pixels of a row of panels
MARGIN = 1.4  # of the counts, at both ends of an axis
COLOURS = (  # told apart by the colour-blind, too
    "#0072b2", "#d55e00", "#009e73", "#cc79a7", "#56b4e9", "#e69f00", "#000000",
)

HEAD = """set terminal svg size {width},{height} dynamic font 'sans-serif,12' background '#ffffff'
set output '{file}'
set multiplot layout 1,{panels} spacing 0.08,0
set logscale x
set format x '10^{{%L}}'
set grid ytics lc rgb '#dddddd'
set border 3 lc rgb '#666666'
set tics nomirror
set key below maxrows 3 samplen 1.5
"""


def points(name, figures):
    return f"${name} << EOD\n" + "".join(f"{count} {figure}\n" for count, figure in sorted(figures.items())) + "EOD\n"


def panel(number, title, unit, lines, bound):
    """One diagram: a line for each name, with its figure by count; a dashed one at the bound, if there is one."""
    text = "".join(points(f"p{number}_{at}", figures) for at, figures in enumerate(lines.values()))
    plots = [
        f"$p{number}_{at} with linespoints lw 2 pt 7 ps 0.5 lc rgb '{COLOURS[at % len(COLOURS)]}' title '{name}'"
        for at, name in enumerate(lines)
    ]
    counts = [count for figures in lines.values() for count in figures]
    if bound:
        plots.append(f"{bound} with lines dt 2 lc rgb '#666666' title 'at most'")
    text += f"set title '{title}'\nset xlabel '{unit}'\n"
    text += f"set xrange [{min(counts) / MARGIN}:{max(counts) * MARGIN}]\nset yrange [0:*]\n"
    return text + "plot " + ", ".join(plots) + "\n"


def draw(panels):
    """Writes the picture of all panels, each a title, the unit of its counts, its lines and its bound."""
    script = HEAD.format(width=WIDTH, height=HEIGHT, file=FILE, panels=len(panels))
    script += "".join(panel(number, *one) for number, one in enumerate(panels))
    subprocess.run(["gnuplot"], input=script, text=True, check=True, capture_output=True)
