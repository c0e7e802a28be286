#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""licences.py ROOT: fails on a source without its licence line among the first three."""
import pathlib
import sys

FOLDERS = ("src", "tests", "dev", "bench", "fuzz", "data", "cmake", "scripts", ".ci")
LICENSED = {".cpp", ".h", ".c", ".py", ".sh", ".cmake"}
LICENCE = "SPDX-License-Identifier: GPL-3.0-or-later"


def main():
    root = pathlib.Path(sys.argv[1])
    wrong = []
    for folder in FOLDERS:
        for path in sorted((root / folder).rglob("*")):
            if path.suffix not in LICENSED or not path.is_file():
                continue
            with path.open(encoding="utf-8", errors="replace") as text:
                if not any(LICENCE in line for _, line in zip(range(3), text)):
                    wrong.append(f"{path.relative_to(root)}:1: its first lines lack \"{LICENCE}\"")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
