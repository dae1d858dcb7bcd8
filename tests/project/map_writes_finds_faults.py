#!/usr/bin/env python3
"""Shows that map_writes.py finds each way to change a map, and accepts what changes none.

    map_writes_finds_faults.py --source TREE
"""

import argparse
import pathlib
import sys

sys.dont_write_bytecode = True  # no folder of caches among the sources
import map_writes

FAULTS = [
    "map.magneticDeviation = 3;",
    "window.TheMap().flags |= MapDirty;",
    "map->trails.clear();",
    "row.trail->lineStyle = style;",
    "for (Trail& trail : map.trails) trail.width += 2;",
    "point.sm[2] = 1;",
    "++range.keys.front().timeFrom;",
    "trail.groupSize--;",
    "std::swap(map.basis, other.basis);",
    "auto name = std::move(trail.name);",
    "auto& trails = map.trails;",
    "SolveMap(map);",
    "if (ok) MeasureTrail(trail);",
    "AnalyzeRange(range, map);",
]
SOUND = [
    "if (map.flags == MapDirty) return;",
    "const auto& trails = map.trails;",
    "history.Apply(DeviationEdit(map, 3));",
    "SaveChangedMaps(map, context);",
    "// map.trails.clear();",
    'Say("trail.color = 3");',
    "const int width = trail.groupSize;",
]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    search = map_writes.Search(parser.parse_args().source)

    def is_faulty(line):
        text = map_writes.NO_CODE.sub(" ", f"void Run() {{\n  {line}\n}}\n")
        return bool(list(search.faults("shell/new_window.cpp", text)))

    wrong = [line for line in FAULTS if not is_faulty(line)]
    wrong += [line for line in SOUND if is_faulty(line)]
    for line in wrong:
        print("wrong:", line)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
