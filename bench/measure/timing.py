"""Running commands in turns, and what they took."""

import statistics
import subprocess
from dataclasses import dataclass

from programs import program


@dataclass(frozen=True)
class Run:
    """What one run of a command took."""

    cpu: float  # seconds of processor time, its own and the system's for it
    clock: float  # seconds
    peak: int  # bytes held at most
    faults: int  # of pages, without the disk


class Runs:
    """All runs of one command. A figure of theirs is the median."""

    def __init__(self):
        self.runs = []

    @property
    def cpu(self):
        return statistics.median(run.cpu for run in self.runs)

    @property
    def best_clock(self):
        """The least, not the median: for runs so short that any other program doubles them."""
        return min(run.clock for run in self.runs)

    @property
    def peak(self):
        return statistics.median(run.peak for run in self.runs)

    @property
    def clock(self):
        return statistics.median(run.clock for run in self.runs)

    @property
    def faults(self):
        return statistics.median(run.faults for run in self.runs)

    @property
    def spread(self):
        """How far the middle half of the processor times is apart, as a share of their median."""
        if len(self.runs) < 2:
            return 0.0
        low, _, high = statistics.quantiles([run.cpu for run in self.runs], n=4, method="inclusive")
        return (high - low) / self.cpu


def run(command):
    """Runs a command, a list of words, its output to nowhere. Raises CalledProcessError when it fails."""
    done = subprocess.run([program("timed"), *command], check=True, capture_output=True, text=True)
    cpu, clock, peak, faults = done.stdout.split()
    return Run(float(cpu), float(clock), int(peak), int(faults))


def in_turns(commands, rounds, prepare=lambda: None):
    """Runs each of the named commands that many times, one after the other in every round, each after `prepare`; the
    first round, which finds cold caches, does not count unless it is the only one. Returns the runs by name."""
    runs = {name: Runs() for name in commands}
    for number in range(rounds + 1 if rounds > 1 else 1):
        for name, command in commands.items():
            prepare()
            one = run(command)
            if number > 0 or rounds == 1:
                runs[name].runs.append(one)
    return runs


def ratio(dividend, divisor):
    """The median over the rounds of how many times the processor time of `divisor` `dividend` took."""
    return statistics.median(a.cpu / b.cpu for a, b in zip(dividend.runs, divisor.runs))


def clock_ratio(dividend, divisor):
    """The same of the time on the clock."""
    return statistics.median(a.clock / b.clock for a, b in zip(dividend.runs, divisor.runs))
