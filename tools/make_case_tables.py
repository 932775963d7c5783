#!/usr/bin/env python3
"""Makes text/CaseTables.gen.cpp, the properties and case mappings of 16-bit units.

  make_case_tables.py                 writes the file
  make_case_tables.py --check         exits with 1 when the file is not what would be written
  make_case_tables.py --extract DIR   rewrites the input from the Unicode character database in DIR
                                      (Debian: package unicode-data, /usr/share/unicode)

The input is unicode_facts.txt beside this script: the few facts the tables need about the characters
that Unicode 4.0 knew. Younger characters are left out, as the target of a mapping too, so that the
tables stay as they are whichever database the facts come from.
"""

import sys
from pathlib import Path
from typing import NamedTuple

HERE = Path(__file__).resolve().parent
FACTS = HERE / "unicode_facts.txt"
OUTPUT = HERE.parent / "text" / "CaseTables.gen.cpp"

# Last version whose characters count.
VERSION = (4, 0)

# The ranges in the order of look-up. In those without properties every unit is a letter without case.
RANGES = [
    (0x0000, 0x07B1, True),
    (0x0901, 0x1974, True),
    (0x1D00, 0x2183, True),
    (0x24B6, 0x24E9, True),
    (0x3000, 0x31FF, True),
    (0x3400, 0x4DB5, False),
    (0x4E00, 0x9FA5, False),
    (0xA000, 0xA48C, False),
    (0xAC00, 0xD7A3, False),
    (0xF900, 0xFFFF, True),
]

# What a case class adds: 1 to 7 are upper case, 8 to 14 lower case, 15 asks the exception lists.
DELTAS = [0, 1, -8, 16, 26, 32, 48, 80, -1, 8, -16, -26, -32, -48, -80, 0]
UPPER_CLASSES = range(1, 8)
LOWER_CLASSES = range(8, 15)
IRREGULAR = 15

WHITE_SPACE, FORMAT, SYMBOL_START, SYMBOL_CHAR = 0x10, 0x20, 0x40, 0x80
CATEGORY_BITS = {
    "Zs": WHITE_SPACE,
    "Cf": FORMAT,
    "L": SYMBOL_START | SYMBOL_CHAR,
    "Nl": SYMBOL_START | SYMBOL_CHAR,
    "Nd": SYMBOL_CHAR,
    "Mn": SYMBOL_CHAR,
    "Mc": SYMBOL_CHAR,
    "Pc": SYMBOL_CHAR,
    "So": 0,  # Here for its case mappings alone: the circled letters.
}
EXTRA_BITS = {unit: WHITE_SPACE for unit in [*range(0x09, 0x0E), 0x200B]}
EXTRA_BITS |= {ord(sign): SYMBOL_START | SYMBOL_CHAR for sign in "$_"}


class Fact(NamedTuple):
    """A character: general category (all letters are "L") and the distances to its case partners."""

    category: str
    lower: int = 0
    upper: int = 0


def extract(folder):
    """The facts from the files of the character database."""
    known = read_ages(folder / "DerivedAge.txt")
    facts, first = {}, 0
    for line in (folder / "UnicodeData.txt").read_text(encoding="ascii").splitlines():
        fields = line.split(";")
        unit = int(fields[0], 16)
        if unit > 0xFFFF:
            break
        if fields[1].endswith("First>"):
            first = unit
            continue
        category = "L" if fields[2].startswith("L") else fields[2]
        upper, lower = (int(field, 16) if field else unit for field in fields[12:14])
        fact = Fact(category, lower - unit if lower in known else 0, upper - unit if upper in known else 0)
        if category not in CATEGORY_BITS or (category == "So" and not fact.lower and not fact.upper):
            continue
        begin = first if fields[1].endswith("Last>") else unit
        facts |= {each: fact for each in range(begin, unit + 1) if each in known}
    return facts


def read_ages(file):
    """The characters that are old enough."""
    known = set()
    for line in file.read_text(encoding="utf-8").splitlines():
        fields = line.partition("#")[0].split(";")
        if len(fields) == 2 and tuple(map(int, fields[1].split("."))) <= VERSION:
            first, _, last = fields[0].strip().partition("..")
            known.update(range(int(first, 16), int(last or first, 16) + 1))
    return known


def write_facts(facts):
    lines = [
        "# What text/CaseTables.gen.cpp is made from: the characters up to U+FFFF that Unicode 4.0 knew and",
        "# that are white space, format characters, part of identifiers, or have a case mapping.",
        "# Taken by make_case_tables.py --extract from UnicodeData.txt and DerivedAge.txt of the Unicode",
        "# Character Database 15.0.0 (Debian package unicode-data).",
        "# Character or range, general category (L: any letter), distances to the simple mappings.",
    ]
    begin = None
    for unit in sorted(facts):
        if begin is None:
            begin = unit
        if facts.get(unit + 1) == facts[unit]:
            continue
        fact = facts[unit]
        name = f"{begin:04X}" if begin == unit else f"{begin:04X}..{unit:04X}"
        lower = f" lower{fact.lower:+}" if fact.lower else ""
        upper = f" upper{fact.upper:+}" if fact.upper else ""
        lines.append(f"{name} {fact.category}{lower}{upper}")
        begin = None
    FACTS.write_text("\n".join(lines) + "\n", encoding="ascii")


def read_facts():
    facts = {}
    for line in FACTS.read_text(encoding="ascii").splitlines():
        if line.startswith("#"):
            continue
        name, category, *mappings = line.split()
        distances = {mapping[:5]: int(mapping[5:]) for mapping in mappings}
        fact = Fact(category, **distances)
        first, _, last = name.partition("..")
        facts |= {unit: fact for unit in range(int(first, 16), int(last or first, 16) + 1)}
    return facts


def case_class(fact):
    if not fact.lower and not fact.upper:
        return 0
    classes, distance = (LOWER_CLASSES, fact.upper) if fact.upper else (UPPER_CLASSES, fact.lower)
    if fact.lower and fact.upper:  # A title-case digraph has partners on both sides.
        return IRREGULAR
    return next((each for each in classes if DELTAS[each] == distance), IRREGULAR)


def make_properties(facts):
    properties = dict(EXTRA_BITS)
    for unit, fact in facts.items():
        properties[unit] = properties.get(unit, 0) | CATEGORY_BITS[fact.category] | case_class(fact)
    for first, last, stored in RANGES:
        if not stored:
            block = {properties.pop(unit, 0) for unit in range(first, last + 1)}
            assert block == {SYMBOL_START | SYMBOL_CHAR}, f"U+{first:04X} needs properties"
    strangers = [unit for unit in properties if not any(first <= unit <= last for first, last, _ in RANGES)]
    assert not strangers, f"outside all ranges: {strangers}"
    return properties


def rows(items, per_line):
    return [
        "    " + ", ".join(items[begin : begin + per_line]) + ","
        for begin in range(0, len(items), per_line)
    ]


def make_source(facts):
    properties = make_properties(facts)
    lines = [
        "// Generated by tools/make_case_tables.py. Do not edit.",
        "",
        '#include "text/CaseTables.h"',
        "",
        "// clang-format off",
        "namespace KrCore {",
        "",
        "namespace {",
        "",
    ]
    table = []
    for first, last, stored in RANGES:
        name = f"properties{first:04X}" if stored else "nullptr"
        table.append(f"    {{0x{first:04X}, 0x{last:04X}, {name}}},")
        if stored:
            lines.append(f"constexpr unsigned char {name}[] = {{")
            lines += rows([f"0x{properties.get(unit, 0):02X}" for unit in range(first, last + 1)], 16)
            lines += ["};", ""]
    lines += ["} // namespace", ""]
    lines += ["constexpr PropertyRange propertyRanges[propertyRangeCount] = {", *table, "};", ""]
    for side in ("lower", "upper"):
        pairs = [
            f"{{0x{unit:04X}, {getattr(fact, side)}}}"
            for unit, fact in sorted(facts.items())
            if properties.get(unit, 0) & 0xF == IRREGULAR and getattr(fact, side)
        ]
        lines += [f"constexpr CaseException {side}Exceptions[] = {{", *rows(pairs, 5), "};", ""]
    lines += [
        "constinit const CaseMap lowerCaseMap = makeCaseMap(propertyRanges, upperCaseClasses, lowerExceptions);",
        "constinit const CaseMap upperCaseMap = makeCaseMap(propertyRanges, lowerCaseClasses, upperExceptions);",
        "",
        "} // namespace KrCore",
    ]
    return "\n".join(lines) + "\n"


def main(arguments):
    if arguments[:1] == ["--extract"] and len(arguments) == 2:
        write_facts(extract(Path(arguments[1])))
        return 0
    source = make_source(read_facts())
    if arguments == ["--check"]:
        if OUTPUT.read_text(encoding="ascii") == source:
            return 0
        print(f"{OUTPUT} is not what {Path(__file__).name} makes of {FACTS.name}", file=sys.stderr)
        return 1
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    OUTPUT.write_text(source, encoding="ascii", newline="\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
