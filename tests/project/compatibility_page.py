#!/usr/bin/env python3
"""Checks that docs/compatibility.md names tests that exist, at least one for each rule.

    compatibility_page.py --source TREE
"""

import argparse
import pathlib
import re
import sys

DEFINED = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\)", re.M)
NAMED = re.compile(r"`(\w+\.\w+)`")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    source = parser.parse_args().source
    tests = {f"{suite}.{name}" for path in (source / "tests").rglob("*.cpp")
             for suite, name in DEFINED.findall(path.read_text(errors="replace"))}
    rows = [line for line in (source / "docs/compatibility.md").read_text().split("\n")
            if line.startswith("|") and not re.match(r"\| (Rule|-)|\|-", line)]
    faults = []
    for row in rows:
        named = NAMED.findall(row.rstrip("|").split("|")[-1])
        if not named:
            faults.append(f"no test in: {row}")
        faults += [f"there is no test {name}" for name in named if name not in tests]
    print(f"{len(rows)} rules, {len(tests)} tests")
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults or not rows else 0)


main()
