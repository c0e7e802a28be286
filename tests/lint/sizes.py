#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""sizes.py ROOT: fails on a file below ROOT/src of more than 600 lines or a function of more than 80.

A function is a brace that opens outside of any function and follows a parameter list; it is counted
from the line of its name to the closing brace.
"""
import pathlib
import re
import sys

FILE_LINES = 600
FUNCTION_LINES = 80

# Comments, raw strings, strings and character literals: blanked, so that no brace in them counts.
NOT_CODE = re.compile(
    r'//[^\n]*|/\*.*?\*/|R"([^()\\ ]{0,16})\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\\n])+\'',
    re.S)
NOT_A_FUNCTION = re.compile(r"^\s*(inline\s+)?(namespace|class|struct|union|enum|extern)\b")


def code_only(text):
    return NOT_CODE.sub(lambda m: re.sub(r"[^\n]", " ", m.group(0)), text)


def functions(text):
    """Yields (line of the head, number of lines, head) of each function definition."""
    head_start, depth, opened_at = 0, [], None  # depth: one entry per open brace, True = a function
    for place in re.finditer(r"[{};#]", text):
        sign = place.group(0)
        if sign == "#":  # a preprocessor line is no part of a head
            if opened_at is None:
                head_start = text.find("\n", place.start()) + 1
        elif sign == "{":
            head = text[head_start:place.start()]
            is_function = (opened_at is None and "(" in head and not NOT_A_FUNCTION.match(head)
                           and not head.rstrip().endswith(("=", "(", ",")))
            if is_function:
                opened_at = (head_start + len(head) - len(head.lstrip()), len(depth), head)
            depth.append(is_function)
            if opened_at is None:
                head_start = place.end()
        elif sign == "}":
            if depth:
                depth.pop()
            if opened_at and len(depth) == opened_at[1]:
                first = text.count("\n", 0, opened_at[0]) + 1
                last = text.count("\n", 0, place.start()) + 1
                yield first, last - first + 1, " ".join(opened_at[2].split())
                opened_at = None
            if opened_at is None:
                head_start = place.end()
        elif opened_at is None:
            head_start = place.end()


def main():
    root = pathlib.Path(sys.argv[1])
    wrong = []
    for path in sorted((root / "src").rglob("*")):
        if path.suffix not in (".cpp", ".h"):
            continue
        text = path.read_text(encoding="utf-8")
        name = path.relative_to(root)
        lines = text.count("\n")
        if lines > FILE_LINES:
            wrong.append(f"{name}: {lines} lines; a file has at most {FILE_LINES}")
        for line, length, head in functions(code_only(text)):
            if length > FUNCTION_LINES:
                wrong.append(f"{name}:{line}: {length} lines; a function has at most {FUNCTION_LINES}: {head[:90]}")
    print("\n".join(wrong))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
