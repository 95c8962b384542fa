"""Prints how many lines of each folder under src/ are covered, from the summary that llvm-cov exports as JSON."""

import collections
import json
import sys

counts = collections.defaultdict(lambda: [0, 0])
for file in json.load(sys.stdin)["data"][0]["files"]:
    folder = file["filename"].rsplit("/src/", 1)[1].split("/")[0]
    lines = file["summary"]["lines"]
    for name in (folder, "all"):
        counts[name][0] += lines["covered"]
        counts[name][1] += lines["count"]
for folder, (covered, count) in sorted(counts.items()):
    print(f"{folder:12} {covered:6} of {count:6} lines  {100 * covered / max(count, 1):5.1f} %")
