#!/usr/bin/env python3
"""Keeps the house's floor plan: who may include whom, no include cycles, systems only behind the platform seam.

The families lie above one another in the order of LAYERS; a file includes its own level and below. The few
known upward steps are named in UPWARD_STEPS, each with its reason.
"""

import re
import subprocess
import sys
from pathlib import Path

LAYERS = ["platform", "foundation", "text", "containers", "regexp", "values", "xml", "files", "messages", "live"]

UPWARD_STEPS = {
    # beginning of the file's name: families above its own that it may include, and why
    "foundation/ExitFunctions": {"containers"},   # the exit list is a word array
    "foundation/InitTerm": {"containers"},        # the exit list is a word array
    "foundation/WeakReferences": {"containers"},  # the weak-reference table is made of word arrays
    "text/EncoderRegistry": {"containers"},       # names are found in a hash table
    "text/Localizer": {"containers", "values"},   # placeholders take their text from an array of values
    "containers/Array": {"values"},               # the array of Variants; no other container knows them
    "include/krcore/containers/Array": {"values"},
    "values/VariantContent": {"files", "live"},   # a value owns its file, counts the live object it holds
    "values/VariantCompare": {"files"},           # and compares its file by the path
    "values/VariantConvert": {"live"},            # and asks it for its number and its text
    "values/VariantProperties": {"live"},         # and reads and writes its properties
    "values/Error": {"live"},                     # a live object names its property in a message
}

SYSTEM_HEADERS = re.compile(
    r"(windows|winsock2|unistd|pthread|iconv|dirent|fcntl|process|io|dlfcn|langinfo|sys/[a-z]+)\.h")
LONG = re.compile(r"\blong\b")
FIXED_SIZE_LONG = re.compile(r"\blong long\b|\blong double\b")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)
COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/|\"(?:\\.|[^\"\\\n])*\"", re.DOTALL)
PRODUCT = ("include/", "platform/", "foundation/", "text/", "containers/", "regexp/", "values/", "xml/", "files/", "live/")


def family(path):
    """The family a file belongs to; None for family headers and what is no part of the library."""
    parts = path.split("/")
    if parts[:2] == ["include", "krcore"]:
        return parts[2] if len(parts) > 3 else None
    return parts[0] if parts[0] in LAYERS else None


def may_step_up(path, above):
    return any(path.startswith(name) and above in families for name, families in UPWARD_STEPS.items())


def resolve(path, quote, name, files):
    if name.startswith("krcore/"):
        return "include/" + name
    if quote == '"':
        beside = (Path(path).parent / name).as_posix()
        return beside if beside in files else name
    return None


def find_cycle(graph):
    state = {}

    def visit(node, trail):
        state[node] = "open"
        for target in graph.get(node, ()):
            if state.get(target) == "open":
                return trail[trail.index(target):] + [target]
            if target not in state:
                cycle = visit(target, trail + [target])
                if cycle:
                    return cycle
        state[node] = "done"
        return None

    for node in graph:
        if node not in state:
            cycle = visit(node, [node])
            if cycle:
                return cycle
    return None


def main():
    listed = subprocess.run(["git", "ls-files", "*.h", "*.cpp"], check=True, capture_output=True, text=True)
    files = set(listed.stdout.split())
    problems = []
    graph = {}
    for path in sorted(files):
        if not path.startswith(PRODUCT):
            continue
        text = Path(path).read_text(encoding="utf-8")
        level = family(path)
        in_platform_half = path.startswith(("platform/windows/", "platform/posix/"))
        targets = []
        for quote, name in INCLUDE.findall(text):
            if SYSTEM_HEADERS.fullmatch(name) and not in_platform_half:
                problems.append(f"{path}: operating-system header {name} outside platform/")
            target = resolve(path, quote, name, files)
            if target is None:
                continue
            if target not in files:
                problems.append(f"{path}: includes {name}, which is not there")
                continue
            targets.append(target)
            above = family(target)
            if level and above and LAYERS.index(above) > LAYERS.index(level):
                if not may_step_up(path, above):
                    problems.append(f"{path}: {level} may not include {target}")
        graph[path] = targets
        if not path.startswith("platform/") and path != "include/krcore/foundation/Export.h" and "_WIN32" in text:
            problems.append(f"{path}: asks for the system outside platform/")
        code = COMMENT.sub("", text)
        if not in_platform_half and LONG.search(FIXED_SIZE_LONG.sub("", code)):
            problems.append(f"{path}: 'long' has another size on each system")
    cycle = find_cycle(graph)
    if cycle:
        problems.append("include cycle: " + " -> ".join(cycle))
    for problem in problems:
        print(problem, file=sys.stderr)
    print(f"layers: {len(graph)} files, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
