#!/usr/bin/env python3
"""Shows that guide_commands.py accepts a sound page and rejects each kind of fault.

    guide_commands_finds_faults.py --prefix ROOT --work SCRATCH
"""

import argparse
import pathlib
import subprocess
import sys

SOUND = """# Page

```sh
orvane-cli index examples/first.map > index.txt
```

```console
$ orvane-cli locate examples/first.map Nowhere
error: Can't find Nowhere
```

```map own.map
G	Camp	N1 22.0'	E115 36.0'
```

```text in index.txt
Kana0	N1° 22.417' E115° 36.979'	249m
```
"""

# What is added to the sound page, and a part of what must be said.
FAULTS = [
    ("```\norvane-cli index own.map\n```", "does not say what the block is"),
    ("```sh quickly\ntrue\n```", "does not say what the block is"),
    ("```sh\norvane-cli index missing.map\n```", "status 1"),
    ("```text\norvane-cli index own.map\n```", "a command in a block that does not run"),
    ("```console\n$ orvane-cli index own.map\nCamp\n```", "in the text"),
    ("```console\n$ orvane-cli locate own.map Nowhere\n…\n```", "status 1"),
    ("```text in index.txt\nKana1\n```", "does not hold these lines"),
    ("```text in missing.txt\nKana1\n```", "is not there"),
    ("```text = index.txt\nKana0\n```", "in the text"),
    ("```sh setup\n./no-such-script\n```", "is not there"),
    ("```sh setup\ncmake --preset nowhere\n```", "no preset nowhere"),
    ("```sh setup\ncp -r /usr/share/doc/orvane/nothing .\n```", "is not there"),
    ("```sh window\norvane missing.map\n```", "is not there"),
    ("```sh window\ntrue\n```", "does not start a window"),
    ("```map\nC	Camp	Base	far	0\n```", "can't be read"),
    ("| Text | Latitude | Longitude | Altitude |\n|---|---|---|---|\n| `Camp` | 2.0 | 115.0 | |",
     "`Camp` is"),
    ("```sh\ntrue", "does not end"),
]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--prefix", type=pathlib.Path, required=True)
    parser.add_argument("--work", type=pathlib.Path, required=True)
    arguments = parser.parse_args()
    arguments.work.mkdir(parents=True, exist_ok=True)
    source = arguments.work / "source"
    source.mkdir(exist_ok=True)
    (source / "CMakePresets.json").write_text('{"configurePresets": [{"name": "release"}]}')
    checker = pathlib.Path(__file__).with_name("guide_commands.py")
    wrong = 0
    for addition, words in [("", "")] + FAULTS:
        (source / "page.md").write_text(SOUND + "\n" + addition + "\n")
        result = subprocess.run(
            [sys.executable, checker, "--source", source, "--prefix", arguments.prefix,
             "--work", arguments.work / "scratch", "page.md"],
            text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if (result.returncode != 0) != bool(words) or words not in result.stdout:
            print(f"{addition or 'the sound page'}: status {result.returncode}\n{result.stdout}",
                  file=sys.stderr)
            wrong += 1
    print(f"{len(FAULTS)} kinds of faults")
    sys.exit(1 if wrong else 0)


main()
