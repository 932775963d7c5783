#!/usr/bin/env python3
"""Runs the benchmark programs of a build and prints each case beside its peers.

Usage: bench_table.py <folder of benchmark programs> [area]...

A benchmark is named "<area>/<case>/<who>"; "krcore" among them is the library, the others are its peers. A
ratio below 1 says that the library is faster. Times are medians of five repetitions of one run. A case without
a peer may give the longest time it should take, in nanoseconds, as its counter "target".
"""

import json
import os
import subprocess
import sys
from pathlib import Path

REPETITIONS = 5
LIBRARY = "krcore"


def programs(folder):
    return sorted(path for path in Path(folder).rglob("krcore_*_benchmark*")
                  if path.is_file() and os.access(path, os.X_OK))


def measure(program, areas):
    command = [str(program), f"--benchmark_repetitions={REPETITIONS}", "--benchmark_report_aggregates_only=true",
               "--benchmark_enable_random_interleaving=true", "--benchmark_min_time=0.1",
               "--benchmark_format=json"]
    if areas:
        command.append("--benchmark_filter=^(" + "|".join(areas) + ")/")
    result = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False)
    # A program without a case in the areas asked for prints no report.
    start = result.stdout.find("{")
    if result.returncode != 0 or start < 0:
        return {}
    print(result.stdout[:start], end="")
    times = {}
    for row in json.loads(result.stdout[start:])["benchmarks"]:
        if row.get("aggregate_name") != "median":
            continue
        scale = {"ns": 1.0, "us": 1e3, "ms": 1e6}[row["time_unit"]]
        name = row["run_name"].split("/threads:")[0].removesuffix("/real_time")
        times[name] = row["real_time"] * scale
        if "target" in row:
            times[name.removesuffix(LIBRARY) + "target"] = row["target"]
    return times


def print_table(times):
    cases = {}
    for name, nanoseconds in times.items():
        case, who = name.rsplit("/", 1)
        cases.setdefault(case, {})[who] = nanoseconds
    for case, row in cases.items():
        own = row.pop(LIBRARY, None)
        if own is None:
            print(f"{case:52} {'(no library case)':>12}")
            continue
        if not row:
            print(f"{case:52} {own:12.1f} ns")
        for peer, nanoseconds in row.items():
            print(f"{case:52} {own:12.1f} ns  {peer:18} {nanoseconds:12.1f} ns  ratio {own / nanoseconds:5.2f}")


def main():
    if len(sys.argv) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    found = programs(sys.argv[1])
    measured = 0
    for program in found:
        times = measure(program, sys.argv[2:])
        measured += len(times)
        print_table(times)
        sys.stdout.flush()
    if not measured:
        print("no benchmark matched", file=sys.stderr)
    return 0 if measured else 1


if __name__ == "__main__":
    sys.exit(main())
