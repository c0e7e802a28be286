#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tidy_files.py TOOL BUILD [FILE...]: runs clang-tidy on the files, or on every unit that BUILD compiles
but for what is generated, as many at a time as there are processors. Fails on a finding, and on a file
that no target builds.

A unit without a finding leaves a mark in BUILD/clean, named by a hash of everything that the tool
reads: the file with all that it includes, comments and all, the command, the settings and the tool
itself. It is run again only when one of these has changed.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import time

CHECKS_OF_UNITS = "-bugprone-suspicious-include"  # a unit of several files includes them
CHECKS_OF_TESTS = ",-performance-inefficient-string-concatenation,-clang-analyzer-optin.performance.Padding"
CHECKS_OF_BENCHMARKS = ",-clang-analyzer-deadcode.DeadStores"  # "for (auto _ : state)"


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


def is_ours(entry):
    """Neither made by Qt's tools, nor a header that is compiled alone, nor one of the floors in C."""
    return not re.search(r"_autogen/|_verify_interface_header_sets/|[.]c$", entry["file"])


def check(tool, settings, build, name, entry):
    """What the tool says of the file; empty where it is clean."""
    if entry is None:
        return f"{name}: no target builds it\n"
    # A test may be written for the eye where the product is written for the clock.
    checks = CHECKS_OF_UNITS + (CHECKS_OF_TESTS if "/tests/" in entry["file"] else "")
    checks += CHECKS_OF_BENCHMARKS if "/bench/" in entry["file"] else ""
    text = preprocess(entry)
    mark = None
    if text is not None:
        of_all = settings + checks.encode() + entry["command"].encode() + text
        mark = build / "clean" / hashlib.sha256(of_all).hexdigest()
        if mark.exists():
            return ""
    done = subprocess.run(["nice", tool, "-p", build, "--quiet", f"--checks={checks}", name], capture_output=True,
                          text=True, check=False)
    if done.returncode == 0 and mark:
        mark.touch()
    return "" if done.returncode == 0 else done.stdout + done.stderr


def main():
    tool, build, names = sys.argv[1], pathlib.Path(sys.argv[2]), sys.argv[3:]
    (build / "clean").mkdir(exist_ok=True)
    settings = pathlib.Path(".clang-tidy").read_bytes() + subprocess.check_output([tool, "--version"])
    known = commands(build)
    names = names or [name for name, entry in known.items() if is_ours(entry)]
    began = time.monotonic()
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        entries = [known.get(os.path.realpath(name)) for name in names]
        for said in pool.map(lambda name, entry: check(tool, settings, build, name, entry), names, entries):
            if said:
                failed = True
                print(said, flush=True)
    if not failed:
        print(f"tidy: {len(names)} unit(s) without a finding, in {time.monotonic() - began:.0f} s.")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
