"""What was measured on."""

import datetime
import os
import platform
import subprocess

from programs import ROOT


def first_line(command):
    return subprocess.run(command, capture_output=True, text=True, check=False, cwd=ROOT).stdout.split("\n")[0]


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as about:
        for line in about:
            if line.startswith("model name"):
                return line.split(":")[1].strip()
    return platform.machine()


def memory():
    return os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30


def description():
    commit = first_line(["git", "describe", "--always", "--dirty"])
    return (
        f"{datetime.date.today()}, commit {commit}. {os.cpu_count()} processors {processor()}, {memory():.0f} GiB of"
        f" memory, Linux {platform.release()}, {first_line(['c++', '--version'])}, {first_line(['flex', '--version'])}."
    )
