#!/usr/bin/env python3
"""Checks the manual pages: their form, and that they name the options that the programs have.

    manual_pages.py --source TREE --prefix ROOT

ROOT holds the installed programs. The chapter on the batch tool in the guide is checked for the same
options and commands.
"""

import argparse
import os
import pathlib
import re
import subprocess
import sys

OPTION = re.compile(r"(?<![\w-])--([a-z][a-z0-9-]+)")


def output_of(*command, shown=subprocess.PIPE):
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    result = subprocess.run([str(word) for word in command], env=environment, text=True,
                            stdout=shown, stderr=subprocess.PIPE, check=False)
    return result.returncode, (result.stdout or "") + result.stderr


def lint(page, faults):
    """Asks both formatters; the second one shows the page, which is of no interest here."""
    checks = (output_of("mandoc", "-T", "lint", "-W", "warning", page),
              output_of("man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", page,
                        shown=subprocess.DEVNULL))
    faults += [f"{page.name}: status {status}: {text}" for status, text in checks if status or text]


def compare(name, what, wanted, found, faults):
    faults += [f"{name}: does not name {what}{each}" for each in sorted(wanted - found)]
    faults += [f"{name}: names {what}{each}, which does not exist" for each in sorted(found - wanted)]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--prefix", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    pages = arguments.source / "packaging/man"
    programs = arguments.prefix / "bin"
    faults = []
    for page in sorted(pages.glob("*.1")):
        lint(page, faults)
    for program in sorted(programs.iterdir()):
        if not (pages / f"{program.name}.1").exists():
            faults.append(f"{program.name} has no manual page")

    _, help_text = output_of(programs / "orvane", "--help")
    text = (pages / "orvane.1").read_text()
    compare("orvane.1", "--", set(OPTION.findall(help_text)),
            set(re.findall(r"\bFl -([a-z][a-z-]+)", text)) | set(re.findall(r", -([a-z][a-z-]+)", text)) |
            set(re.findall(r"\| -([a-z-]+)", text)), faults)

    _, help_text = output_of(programs / "orvane-cli", "--help")
    commands = set(re.findall(r"^  ([a-z][a-z-]+) +[A-Z]", help_text.split("Subcommands:")[1], re.M))
    options = set(OPTION.findall(help_text))
    for command in sorted(commands):
        options |= set(OPTION.findall(output_of(programs / "orvane-cli", command, "--help")[1]))
    text = (pages / "orvane-cli.1").read_text()
    compare("orvane-cli.1", "", commands, set(re.findall(r"^\.It Cm ([a-z-]+)", text, re.M)), faults)
    compare("orvane-cli.1", "--", options, set(re.findall(r"\bFl -([a-z][a-z0-9-]+)", text)) |
            set(re.findall(r"Fl h , -([a-z]+)", text)), faults)

    text = (arguments.source / "docs/guide/batch-tool.md").read_text()
    compare("batch-tool.md", "", commands, set(re.findall(r"^## `([a-z-]+) ", text, re.M)), faults)
    missing = {option for option in options
               if not re.search(rf"--{option}(?![a-z-])", text)} - {"output", "sm2", "sm3", "sm2-code",
                                                                    "sm3-code"}
    faults += [f"batch-tool.md: does not name --{option}" for option in sorted(missing)]

    print(f"{len(commands)} commands, {len(options)} options")
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults or not commands or not options else 0)


main()
