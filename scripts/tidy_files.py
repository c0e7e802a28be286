#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tidy_files.py TOOL BUILD: runs clang-tidy on the files that standard input names, one a line, as many
at a time as there are processors, with the compile commands in the folder BUILD. Fails on a finding,
and on a file that no target builds.

A file without a finding leaves a mark in BUILD/clean, named by a hash of everything that the tool
reads: the file with all that it includes, comments and all, the command, the settings and the tool
itself. It is run again only when one of these has changed.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import shlex
import subprocess
import sys
import time


def commands(build):
    entries = json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))
    return {os.path.realpath(os.path.join(e["directory"], e["file"])): e for e in entries}


def preprocess(entry):
    words = shlex.split(entry["command"])
    if os.path.basename(words[0]) == "ccache":
        del words[0]
    at = words.index("-o")
    del words[at:at + 2]
    done = subprocess.run(words + ["-E", "-C"], cwd=entry["directory"], capture_output=True, check=False)
    return done.stdout if done.returncode == 0 else None


def check(tool, settings, build, name, entry):
    """What the tool says of the file; empty where it is clean."""
    if entry is None:
        return f"{name}: no target builds it\n"
    text = preprocess(entry)
    mark = None
    if text is not None:
        mark = build / "clean" / hashlib.sha256(settings + entry["command"].encode() + text).hexdigest()
        if mark.exists():
            return ""
    done = subprocess.run(["nice", tool, "-p", build, "--quiet", name], capture_output=True, text=True, check=False)
    if done.returncode == 0 and mark:
        mark.touch()
    return "" if done.returncode == 0 else done.stdout + done.stderr


def main():
    tool, build = sys.argv[1], pathlib.Path(sys.argv[2])
    (build / "clean").mkdir(exist_ok=True)
    settings = pathlib.Path(".clang-tidy").read_bytes() + subprocess.check_output([tool, "--version"])
    known = commands(build)
    names = sys.stdin.read().split("\n")[:-1]
    began = time.monotonic()
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        entries = (known.get(os.path.realpath(name)) for name in names)
        for said in pool.map(lambda name, entry: check(tool, settings, build, name, entry), names, entries):
            if said:
                failed = True
                print(said, flush=True)
    if not failed:
        print(f"tidy: {len(names)} file(s) without a finding, in {time.monotonic() - began:.0f} s.")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
