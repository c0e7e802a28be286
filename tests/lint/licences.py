#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""texts.py ROOT: fails on words that have no place in what the project publishes, and on a source
without its licence line. A file speaks of the program, not of how it came to be written.
"""
import os
import pathlib
import re
import sys

FOLDERS = ("src", "tests", "dev", "bench", "fuzz", "data", "cmake", "scripts", "doc", ".ci")
SKIPPED = {"LICENSE"}
LICENSED = {".cpp", ".h", ".c", ".py", ".sh", ".cmake"}
LICENCE = "SPDX-License-Identifier:"

# Each pattern is broken by a class, so that this file does not find itself.
WORDS = {
    r"\bspecificatio[n]s?\b": "say \"standard\" for a public one",
    r"\bthe spe[c]\b": "say \"standard\" for a public one",
    r"\bParts? \d+\.\d[+]?": "a comment tells why, not where it was written",
    r"\bimplemente[r]s?\b": "the project speaks as its own developer",
    r"\bissue[ ]#?\d+": "a comment tells why, not where it was asked for",
    r"\bdecision [X]\d+": "a comment tells why, not where it was decided",
    r"/work[/]": "no path of one machine",
    r"\b(TOD[O]|FIXM[E]|XX[X]|HAC[K])\b": "finish it or leave it out",
    r"\b(deb\.debian\.or[g]|pypi\.or[g]|crates\.i[o]|npmjs\.[c]om|docker\.i[o]|ghcr\.i[o]|archive\.ubunt[u])": "packages are named by name, never by host",
}


def files(root):
    for name in sorted(os.listdir(root)):
        path = root / name
        if name in SKIPPED or name.startswith("build"):
            continue
        if path.is_file() and not (name.startswith(".") and name != ".clang-tidy"):
            yield path
        elif path.is_dir() and name in FOLDERS:
            for below in sorted(path.rglob("*")):
                if below.is_file() and "__pycache__" not in below.parts:
                    yield below


def main():
    root = pathlib.Path(sys.argv[1])
    words = [(re.compile(pattern, 0 if "XX[X]" in pattern else re.I), why) for pattern, why in WORDS.items()]
    wrong = []
    for path in files(root):
        data = path.read_bytes()
        if b"\0" in data:
            continue  # a seed of the fuzzers, a sound
        name = path.relative_to(root)
        text = data.decode("utf-8", "replace")
        if path.suffix in LICENSED and LICENCE not in "\n".join(text.split("\n", 3)[:3]):
            wrong.append(f"{name}:1: its first lines lack \"{LICENCE} GPL-3.0-or-later\"")
        if path.parts[-3:-1] == ("fuzz", "corpus") or "corpus" in path.parts:
            continue
        for number, line in enumerate(text.split("\n"), 1):
            for pattern, why in words:
                found = pattern.search(line)
                if found:
                    wrong.append(f"{name}:{number}: \"{found.group(0)}\": {why}")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
