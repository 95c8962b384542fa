"""What is written down: sections of text and tables, and goals that are met or missed."""

from dataclasses import dataclass, field


@dataclass(frozen=True)
class Goal:
    """A figure that should not leave a bound: at least `bound`, or at most if `is_most`."""

    name: str
    figure: float
    bound: float
    is_most: bool = False
    unit: str = ""
    word: str = "goal"

    @property
    def is_met(self):
        return self.figure <= self.bound if self.is_most else self.figure >= self.bound

    def __str__(self):
        side = "at most" if self.is_most else "at least"
        outcome = "met" if self.is_met else "**missed**"
        return f"{self.name}: {self.figure:.2f}{self.unit}, {self.word} {side} {self.bound:g}{self.unit}: {outcome}"


@dataclass
class Section:
    title: str
    paragraphs: list = field(default_factory=list)
    goals: list = field(default_factory=list)
    rounds: int = 0  # of which a figure is the median; 0 when there are none

    def __str__(self):
        parts = [f"## {self.title}", *self.paragraphs]
        if self.rounds:
            parts.insert(2, "One round." if self.rounds == 1 else f"Medians of {self.rounds} rounds.")
        if self.goals:
            parts.append("\n".join(f"- {goal}" for goal in self.goals))
        return "\n\n".join(parts) + "\n"


def table(heads, rows):
    """A table with its first column to the left and all others to the right."""
    lines = [heads, ["---"] + ["---:"] * (len(heads) - 1), *rows]
    return "\n".join("| " + " | ".join(str(cell) for cell in line) + " |" for line in lines)


def marked(figure, bound):
    """A figure for a table; one above the bound stands out."""
    return f"{figure:.2f}" if figure <= bound else f"**{figure:.2f}**"
