#!/usr/bin/env python3
"""Runs the commands of README.md and the guide as printed, with the installed programs.

    guide_commands.py --source TREE --prefix ROOT --work SCRATCH [PAGE...]

Each page has a scratch folder of its own with a copy of the installed examples, and its blocks run
there from top to bottom, so a block can use what the blocks above it wrote. The words after the
opening ``` say what a block is, and each block needs them:

    sh              commands; each must succeed and print no error
    sh window       starts of the window program; each must still run after some seconds
    sh setup        commands that install or build something; they are not run, only what they name
                    must exist
    console         commands after "$ " with what they print; a line "…" is any number of lines
    LANGUAGE        an example that is not a command; lines of a map must be readable
    LANGUAGE FILE   the text of a file, which is written before the next block runs
    LANGUAGE = FILE     the text that FILE must have now; "…" as above
    LANGUAGE in FILE    lines that FILE must hold now, one after the other

Rows of the tables of places (Text, Latitude, Longitude, ...) are looked up with `orvane-cli locate`.
Numbers may differ in the last digits, because compilers do.
"""

import argparse
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

LANGUAGES = {"map", "text", "csv", "json", "ini"}
WINDOW_SECONDS = 3
TIMED_OUT = 124  # the status of `timeout` when it had to end the program
NUMBER = re.compile(r"-?\d+\.\d+(?:e[-+]?\d+)?")
UNREADABLE = re.compile(r"^error: (Unparseable|Bad|No) ", re.MULTILINE)
FAULT = re.compile(r"^(error|internal error|fatal): ", re.MULTILINE)


class Fault(Exception):
    pass


class Block:
    def __init__(self, page, line, info):
        self.page, self.line, self.info, self.lines = page, line, info.split(), []

    def __str__(self):
        return f"{self.page}:{self.line}"


def blocks_of(page, text):
    """The fenced blocks of a page, from top to bottom."""
    block = None
    for number, line in enumerate(text.split("\n"), 1):
        if line.startswith("```"):
            if block is None:
                block = Block(page, number, line[3:].strip())
            else:
                yield block
                block = None
        elif block is not None:
            block.lines.append(line)
    if block is not None:
        raise Fault(f"{block}: the block does not end")


def same_line(wanted, found):
    """Whether two lines are the same but for the last digits of numbers with a point."""
    if wanted == found:
        return True
    if NUMBER.sub("#", wanted) != NUMBER.sub("#", found):
        return False
    pairs = zip(NUMBER.findall(wanted), NUMBER.findall(found))
    return all(abs(float(a) - float(b)) <= 1e-9 * max(1.0, abs(float(a))) for a, b in pairs)


def matches(wanted, found):
    """Whether the lines found are those wanted, where "…" is any number of lines."""
    if not wanted:
        return not found
    if wanted[0] == "…":
        return any(matches(wanted[1:], found[i:]) for i in range(len(found) + 1))
    return bool(found) and same_line(wanted[0], found[0]) and matches(wanted[1:], found[1:])


def trimmed(text):
    """Lines without blanks at their ends, and without empty lines at the end."""
    lines = [line.rstrip() for line in text.split("\n")]
    while lines and not lines[-1]:
        lines.pop()
    return lines


def compare(block, what, wanted, found):
    if not matches(wanted, found):
        raise Fault(f"{block}: {what} gives\n" + "\n".join(found) + "\n--- in the text:\n" +
                    "\n".join(wanted))


class Runner:
    def __init__(self, source, prefix, work):
        self.source, self.prefix, self.work = source, prefix, work
        self.environment = dict(os.environ, PATH=f"{prefix / 'bin'}:{os.environ['PATH']}",
                                QT_QPA_PLATFORM="offscreen", ORVANE_HOME=str(work / "home"))
        self.counts = {}

    def count(self, what):
        self.counts[what] = self.counts.get(what, 0) + 1

    def begin(self, page):
        self.folder = self.work / page.replace("/", "_").removesuffix(".md")
        self.folder.mkdir(parents=True)
        shutil.copytree(self.prefix / "share/doc/orvane/examples", self.folder / "examples")
        (self.work / "home").mkdir(exist_ok=True)

    def shell(self, command, together=False):
        return subprocess.run(["bash", "-euo", "pipefail", "-c", command], cwd=self.folder,
                              env=self.environment, stdin=subprocess.DEVNULL, text=True,
                              stdout=subprocess.PIPE, errors="replace", check=False,
                              stderr=subprocess.STDOUT if together else subprocess.PIPE)

    def run_block(self, block):
        kind = block.info[0] if block.info else ""
        rest = block.info[1:]
        if kind == "sh" and rest in ([], ["window"], ["setup"]):
            {"": self.run_commands, "window": self.run_windows,
             "setup": self.check_setup}["".join(rest)](block)
        elif kind == "console" and not rest:
            self.run_console(block)
        elif kind in LANGUAGES:
            for line in block.lines:
                if re.match(r"\$ |orvane(-cli|-render)? |cmake |\./", line):
                    raise Fault(f"{block}: a command in a block that does not run: {line}")
            if kind == "map" and not rest:
                self.read_map_lines(block)
            self.use_text(block, rest)
        else:
            raise Fault(f"{block}: \"{' '.join(block.info)}\" does not say what the block is")
        self.count(" ".join(block.info[:2]) if kind == "sh" else kind)

    def run_commands(self, block):
        result = self.shell("\n".join(block.lines))
        if result.returncode != 0 or FAULT.search(result.stderr):
            raise Fault(f"{block}: status {result.returncode}\n{result.stdout}{result.stderr}")

    def run_windows(self, block):
        for line in block.lines:
            if not line.startswith("orvane "):
                raise Fault(f"{block}: does not start a window: {line}")
            for name in line.split()[1:]:
                if not (self.folder / name).exists():
                    raise Fault(f"{block}: {name} is not there")
            result = self.shell(f"timeout {WINDOW_SECONDS} {line}")
            if result.returncode != TIMED_OUT:
                raise Fault(f"{block}: {line} ended with {result.returncode}\n{result.stderr}")

    def check_setup(self, block):
        presets = json.loads((self.source / "CMakePresets.json").read_text())
        known = {preset["name"] for preset in presets["configurePresets"]}
        # A backslash at the end continues the command on the next line.
        for line in "\n".join(block.lines).replace("\\\n", " ").split("\n"):
            words = line.split("#")[0].split()
            if not words:
                continue
            for name in re.findall(r"--preset (\S+)", line):
                if name not in known:
                    raise Fault(f"{block}: there is no preset {name}")
            for word in words:
                if word.startswith("/usr/share/"):
                    here = self.prefix / word.removeprefix("/usr/")
                elif re.match(r"\./\w|scripts/", word) and not word.endswith(".deb"):
                    here = self.source / word
                else:
                    continue
                if not any(here.parent.glob(here.name)):
                    raise Fault(f"{block}: {word} is not there")
            if words[0] not in ("sudo", "cp", "cd", "git", "cmake") and not (
                    self.source / words[0]).exists():
                raise Fault(f"{block}: is no step of a setup: {line}")

    def run_console(self, block):
        steps = []
        for line in block.lines:
            if line.startswith("$ "):
                steps.append((line[2:], []))
            elif steps and steps[-1][0].endswith("\\") and not steps[-1][1]:
                steps[-1] = (steps[-1][0] + "\n" + line, [])
            elif steps:
                steps[-1][1].append(line)
            else:
                raise Fault(f"{block}: does not begin with a command")
        for command, wanted in steps:
            result = self.shell(command, together=True)
            fails = any(FAULT.match(line) for line in wanted)
            if (result.returncode != 0) != fails:
                raise Fault(f"{block}: {command}: status {result.returncode}\n{result.stdout}")
            compare(block, command, trimmed("\n".join(wanted)), trimmed(result.stdout))

    def read_map_lines(self, block):
        """Reads an excerpt beside the maps of the example, with a grid for shades without one."""
        lines = list(block.lines)
        if lines[0].startswith("HS"):
            lines.insert(0, "H\tCorner\t100\t10\t11\t0\tA1\t01")
        text = "\n".join(lines).replace("©", "\xa9") + "\n"
        (self.folder / "examples/site/excerpt.map").write_bytes(text.encode("latin-1"))
        result = self.shell("orvane-cli check examples/site/excerpt.map", together=True)
        if UNREADABLE.search(result.stdout):
            raise Fault(f"{block}: can't be read:\n{result.stdout}")

    def use_text(self, block, rest):
        if not rest:
            return
        file = self.folder / rest[-1]
        if len(rest) == 1:
            file.write_text("\n".join(block.lines) + "\n")
            return
        if not file.exists():
            raise Fault(f"{block}: {rest[-1]} is not there")
        found = trimmed(file.read_text(errors="replace"))
        wanted = trimmed("\n".join(block.lines))
        if rest[0] == "=":
            compare(block, rest[-1], wanted, found)
        elif rest[0] == "in":
            if not matches(["…", *wanted, "…"], found):
                raise Fault(f"{block}: {rest[-1]} does not hold these lines")
        else:
            raise Fault(f"{block}: \"{' '.join(block.info)}\" does not say what the block is")

    def look_up_places(self, page, text):
        """Compares the tables of places with what the batch tool finds on the example site."""
        in_table = False
        for number, line in enumerate(text.split("\n"), 1):
            if line.startswith("| Text | Latitude | Longitude |"):
                in_table = True
            elif not line.startswith("|"):
                in_table = False
            elif in_table and "`" in line:
                cells = [cell.strip() for cell in line.strip("|").split("|")]
                self.look_up(f"{page}:{number}", cells)
                self.count("places")

    def look_up(self, where, cells):
        command = ["orvane-cli", "locate", "examples/site/season.map", cells[0].strip("`")]
        result = subprocess.run(command, cwd=self.folder, env=self.environment, text=True,
                                stdout=subprocess.PIPE, check=False)
        if result.returncode != 0:
            raise Fault(f"{where}: can't find {cells[0]}")
        place = json.loads(result.stdout)
        altitude = place["altitude"]
        names = [f"{kind} {place[kind]}" for kind in ("point", "trail", "range") if place[kind]]
        found = [f"{place['lat']:.6f}", f"{place['lon']:.6f}",
                 "" if altitude is None else f"{altitude:.1f}"]
        if cells[1:4] != found or (len(cells) > 4 and cells[4] != ", ".join(names)):
            raise Fault(f"{where}: {cells[0]} is {found} {names}")


def main():
    parser = argparse.ArgumentParser()
    for name in ("--source", "--prefix", "--work"):
        parser.add_argument(name, type=pathlib.Path, required=True)
    parser.add_argument("pages", nargs="*")
    arguments = parser.parse_args()
    shutil.rmtree(arguments.work, ignore_errors=True)
    arguments.work.mkdir(parents=True)
    runner = Runner(arguments.source.resolve(), arguments.prefix.resolve(), arguments.work.resolve())
    pages = arguments.pages or ["README.md"] + sorted(
        str(path.relative_to(arguments.source))
        for path in (arguments.source / "docs/guide").glob("*.md"))
    faults = []
    for page in pages:
        text = (arguments.source / page).read_text()
        runner.begin(page)
        steps = [lambda block=block: runner.run_block(block) for block in blocks_of(page, text)]
        for step in [*steps, lambda: runner.look_up_places(page, text)]:
            try:
                step()
            except Fault as fault:
                faults.append(str(fault))
    print(", ".join(f"{kind}: {count}" for kind, count in sorted(runner.counts.items())))
    if not runner.counts.get("sh") or not runner.counts.get("console"):
        faults.append("no commands were found")
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults else 0)


main()
