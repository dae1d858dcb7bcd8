#!/usr/bin/env python3
"""Compares the list of all messages in the guide with the texts in the sources.

    message_list.py --source TREE [--list]

Each text of the sources must have a row under "All messages" in docs/guide/messages.md, and each row
a text; "…" in a row takes the place of "%s". --list prints the texts of the sources.
"""

import argparse
import pathlib
import re
import sys

CALL = re.compile(r"\b(Note(?:Warning|Error|InternalError|Fatal|Once)|PostNote|AskUser|PromptForText)\(")
# The number of the argument that holds the text; those before it are names of boxes and buttons.
TEXT_ARGUMENT = {"NoteOnce": 0, "AskUser": 5, "PromptForText": 2}
PROMPT = re.compile(r"\.message = (?=\")")  # of a `TextPrompt`
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
SKIPPED = re.compile(r'//[^\n]*|/\*.*?\*/|\'(?:[^\'\\\n]|\\.)\'|^#include[^\n]*', re.S | re.M)
# How texts begin that reach the messages through a variable.
BEGINNING = re.compile(r"(?:Can't |Can not |Bad |Badly |You must |A GPS |An altitude |Unknown )")
PRINTED = re.compile(r"(?:warning|error|fatal|note): (?=.)")

# Literals that look alike and are not messages: formats of numbers and lines, titles of windows, words
# that go into messages.
NOT_MESSAGES = {
    "%s", "%s%s: %s\\n", "%s\\n", "%s: %s\\n", "%s Col:", "script %zu: %s\\n", "Contour: %s %d%%        \\r", "Elevation of %s %s",
    "orvane-cli: %s\\n", "orvane-cli: cannot run %s: %s\\n",
    "<nameless point>", "<noname>", "<nameless trail>", "", "it declares entities", "Bad Time",
    "Bad Location",
}
def without_comments(text):
    """The source with comments and single characters blanked; literals stay where they are."""
    parts, at = [], 0
    pattern = re.compile(f"({LITERAL.pattern})|{SKIPPED.pattern}", re.S | re.M)
    for found in pattern.finditer(text):
        parts.append(text[at:found.start()])
        parts.append(found.group(0) if found.group(1) is not None else " ")
        at = found.end()
    return "".join(parts) + text[at:]


def posted(text):
    """The spans of the arguments that hold the text of a message."""
    for found in CALL.finditer(text):
        depth, at, argument, begin = 1, found.end(), 0, found.end()
        wanted = TEXT_ARGUMENT.get(found.group(1), 1)
        while depth and at < len(text):
            literal = LITERAL.match(text, at)
            if literal:
                at = literal.end()
                continue
            depth += {"(": 1, "{": 1, ")": -1, "}": -1}.get(text[at], 0)
            if depth == 0 or (depth == 1 and text[at] == ","):
                if argument == wanted:
                    yield begin, at
                argument += 1
                begin = at + 1
            at += 1


def literals(text):
    """Each literal with where it begins; literals side by side are one."""
    pattern = re.compile(rf"{LITERAL.pattern}(?:\s*{LITERAL.pattern})*")
    for found in pattern.finditer(text):
        yield found.start(), "".join(LITERAL.findall(found.group(0)))


def shown(text):
    """A text of the sources as a row of the list shows it."""
    if text.endswith(" "):
        text += "…"  # a name is added to it
    return text.replace("%s", "…").replace('\\"', '"').replace("\\n", " ").replace("%%", "%").strip()


def texts_of_sources(source):
    texts = {}
    for path in sorted((source / "src").rglob("*.[ch]*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        text = without_comments(path.read_text(errors="replace"))
        spans = list(posted(text))
        prompts = {found.end() for found in PROMPT.finditer(text)}
        for begin, literal in literals(text):
            # Some lines of the batch tool are printed without a call that posts them.
            printed = PRINTED.match(literal)
            if printed:
                literal = literal[printed.end():]
            direct = any(first <= begin < last for first, last in spans) or begin in prompts
            if literal in NOT_MESSAGES:
                continue
            if direct or printed or "%s" in literal or BEGINNING.match(literal):
                texts.setdefault(shown(literal), str(path.relative_to(source)))
    return texts


def rows_of_list(source):
    page = (source / "docs/guide/messages.md").read_text()
    part = page.split("\n## All messages\n")[1].split("\n## ")[0]
    rows = set()
    for line in part.split("\n"):
        cells = line.replace("\\|", "\0").strip("|").split("|")
        if line.startswith("|") and not re.match(r"\|\s*(-|Message)", line):
            rows.add(cells[0].replace("\0", "|").replace("`", "").strip())
    return rows


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--list", action="store_true")
    arguments = parser.parse_args()
    texts = texts_of_sources(arguments.source)
    if arguments.list:
        for text, path in texts.items():
            print(f"{path}: {text}")
        return
    rows = rows_of_list(arguments.source)
    faults = [f"{path}: no row in docs/guide/messages.md for: {text}"
              for text, path in texts.items() if text not in rows]
    faults += [f"docs/guide/messages.md: no source has: {row}" for row in sorted(rows - texts.keys())]
    print(f"{len(texts)} texts, {len(rows)} rows")
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults or not texts else 0)


main()
