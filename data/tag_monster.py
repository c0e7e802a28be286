#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tag_monster.py AUDIO COVER RESULT: puts all three kinds of tag on the demonstration track.

In front an ID3v2.3 tag with the cover, behind the audio a Lyrics3 v2.00 block and an ID3v1.1 record,
as their public descriptions on id3.org have them.
"""
import pathlib
import struct
import sys

TITLE, ARTIST, ALBUM, YEAR, TRACK = "Monster", "Tunemeadow", "Demonstration", "2026", 1
COMMENT = "Made for this catalogue"
GENRE = 12  # Other
LYRICS = "Hum, little monster, under the hill,\r\nhum till the meadow is sleeping and still."
PADDING = 800  # room for a first edit


def frame(name, body):
    """Name, size (a plain number in version 2.3), two bytes of flags, body."""
    return name.encode("ascii") + struct.pack(">IH", len(body), 0) + body


def text_frame(name, text):
    return frame(name, b"\0" + text.encode("cp1252"))


def id3v2(cover):
    frames = b"".join((
        text_frame("TIT2", TITLE),
        text_frame("TPE1", ARTIST),
        text_frame("TALB", ALBUM),
        text_frame("TYER", YEAR),
        text_frame("TRCK", str(TRACK)),
        text_frame("TCON", f"({GENRE})Other"),
        text_frame("TCOM", ARTIST),
        text_frame("TBPM", "120"),
        frame("COMM", b"\0eng\0" + COMMENT.encode("cp1252")),
        frame("APIC", b"\0image/jpeg\0\x03\0" + cover),  # 3: front cover
    )) + bytes(PADDING)
    size = bytes(len(frames) >> shift & 0x7F for shift in (21, 14, 7, 0))
    return b"ID3\x03\0\0" + size + frames


def lyrics3():
    """Each field: three letters, five digits of length, value. The size counts from the start mark."""
    fields = (("IND", "10"), ("LYR", LYRICS), ("AUT", ARTIST))  # lyrics, without time stamps
    block = "LYRICSBEGIN" + "".join(f"{name}{len(value):05}{value}" for name, value in fields)
    return f"{block}{len(block):06}LYRICS200".encode("cp1252")


def id3v1():
    def padded(text, size):
        return text.encode("cp1252")[:size].ljust(size, b"\0")
    return (b"TAG" + padded(TITLE, 30) + padded(ARTIST, 30) + padded(ALBUM, 30) + padded(YEAR, 4)
            + padded(COMMENT, 28) + bytes((0, TRACK, GENRE)))


def main():
    audio, cover, result = (pathlib.Path(name) for name in sys.argv[1:4])
    tagged = id3v2(cover.read_bytes()) + audio.read_bytes() + lyrics3() + id3v1()
    result.write_bytes(tagged)


if __name__ == "__main__":
    main()
