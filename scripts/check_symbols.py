#!/usr/bin/env python3
"""Lists what a built library imports and exports and fails on anything unknown.

Usage: check_symbols.py <krcore.dll or libkrcore.so> [--objdump PROGRAM] [--list]

The DLL may need system DLLs only; on both systems nothing but the public interface may be visible: members,
virtual tables and type information of namespace KrCore, and the plain functions named below.
"""

import argparse
import re
import subprocess
import sys

ALLOWED_DLLS = {"comdlg32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "shell32.dll", "user32.dll"}

PLAIN_FUNCTIONS = {
    "DebugAlert", "KrAtomicDec", "KrAtomicInc", "KrGetErrorMsg", "KrGetTopWindow", "getVersion",
    "memchr16", "strchr16", "strcmp16", "strcpy16", "stricmp16", "strlen16", "strncmp16", "strnicmp16",
    "strstr16",
}

# Members of KrCore, their tables, type information, thunks and guard-free static data.
PUBLIC_CXX = re.compile(r"^_Z(T[VISThv][^N]*)?N?[KV]*(6KrCore|St4hashIN6KrCore)|^_ZTh?n?\d*_?N?K?6KrCore|^_ZNK?6KrCore|^_ZN[KR]*6KrCore"
                        r"|^_Z[a-z]{2}RKN6KrCore|^_ZT[hv]n?\d+_.*6KrCore")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def windows_symbols(path, objdump):
    text = run(objdump, "-p", path)
    imports = sorted(set(re.findall(r"DLL Name: (\S+)", text)))
    table = text.split("[Ordinal/Name Pointer] Table", 1)[1]
    exports = re.findall(r"^\s*\[\s*\d+\]\s+(?:\+base\[\s*\d+\]\s+[0-9a-f]+\s+)?(\S+)$", table, re.MULTILINE)
    return imports, exports


def linux_symbols(path):
    exports = []
    for line in run("nm", "-D", "--defined-only", path).splitlines():
        name = line.split()[-1].split("@")[0]
        exports.append(name)
    return [], exports


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("library")
    parser.add_argument("--objdump", default="x86_64-w64-mingw32-objdump")
    parser.add_argument("--list", action="store_true")
    arguments = parser.parse_args()

    if arguments.library.lower().endswith(".dll"):
        imports, exports = windows_symbols(arguments.library, arguments.objdump)
    else:
        imports, exports = linux_symbols(arguments.library)
    if arguments.list:
        print("\n".join(["imports:"] + imports + ["exports:"] + sorted(exports)))

    unknown = [f"import {name}" for name in imports if name.lower() not in ALLOWED_DLLS]
    unknown += [f"export {name}" for name in exports
                if name not in PLAIN_FUNCTIONS and not PUBLIC_CXX.match(name)]
    missing = [f"missing export {name}" for name in sorted(PLAIN_FUNCTIONS) if name not in exports]
    for problem in unknown + missing:
        print(problem, file=sys.stderr)
    print(f"{len(imports)} imports, {len(exports)} exports, {len(unknown)} unknown, {len(missing)} missing")
    return 1 if unknown or missing or not exports else 0


if __name__ == "__main__":
    sys.exit(main())
