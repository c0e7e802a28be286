#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""make_catalogue.py FILE [-n ROWS] [--seed N] [--page BYTES]

Makes a catalogue for the benchmarks by data/schema.sql: the texts of make_library.py, lyrics in 5 % of
the rows, a biography in 2 %, the user tags in a few, 20 playlists of 200 rows and 10 archives of 500.
The same arguments make the same rows. --page sets another page size, to see what one costs.
"""
import argparse
import os
import pathlib
import random
import re
import sqlite3
import sys

from make_library import GENRES, Collection, words

SCHEMA = pathlib.Path(__file__).resolve().parent.parent / "data" / "schema.sql"
QUALITY = ["128 kbps / 44.1 khz / Joint Stereo", "192 kbps / 44.1 khz / Stereo", "320 kbps / 44.1 khz / Joint Stereo",
           "187 kbps (VBR) / 44.1 khz / Joint Stereo", "128 kbps / 48 khz / Stereo", "64 kbps / 32 khz / Single Channel"]
USER_TAGS = {"Situation": (0.05, ["Party", "Dinner", "Work", "Drive", "Background"]),
             "preference": (0.1, ["Excellent", "Very good", "Good", "Fair", "Poor"]),
             "tempo": (0.08, ["Pretty fast", "Fast", "Moderate", "Slow", "Pretty slow"]),
             "Mood": (0.06, ["Upbeat", "Happy", "Mellow", "Wild", "Morose", "Romantic"])}
OFTEN = ("composer", "copyright", "encodedby", "originalartist")


def moment(rng):
    return (f"20{rng.randint(10, 25)}-{rng.randint(1, 12):02}-{rng.randint(1, 28):02} "
            f"{rng.randint(0, 23):02}:{rng.randint(0, 59):02}:{rng.randint(0, 59):02}")


def row(collection, i):
    rng, track = collection.track(i)
    size = rng.randint(2500000, 9000000)
    seconds = size // 20000
    when = moment(rng)
    texts = {
        "Songname": track["title"].replace("'", "''"), "Artist": track["artist"], "genre": str(track["genre"]),
        "genrereal": GENRES[track["genre"]], "quality": rng.choice(QUALITY), "location": "/music/" + track["path"],
        "year": track["year"], "album": track["album"], "trackno": str(track["trackno"]),
        "Playtime": f"{seconds // 60}:{seconds % 60:02}", "playtimereal": str(seconds),
        "Filesize": f"{size / 1048576:.2f} MB", "filesizereal": str(size), "Comment": track["comment"],
        "BPM": track["bpm"] if rng.random() < 0.4 else "", "preview": "Available" if rng.random() < 0.05 else "",
        "lasttimeplayed": moment(rng) if rng.random() < 0.1 else None,
        "bios": words(rng, 40, 120) if rng.random() < 0.02 else "",
        "Lyrics": words(rng, 80, 260) if rng.random() < 0.05 else "",
        "url": track["url"] if rng.random() < 0.5 else "", "haspic": int(rng.random() < 0.1), "hasid3v1": 1,
        "hasid3v2": 1, "datetimeofdbinsert": when, "datetimeofdbupdate": when, "datetimeoffile": when}
    for name, (share, values) in USER_TAGS.items():
        texts[name] = rng.choice(values) if rng.random() < share else ""
    for name in OFTEN:
        texts[name] = track[name] if rng.random() < 0.4 else ""
    return texts


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("file")
    parser.add_argument("-n", type=int, default=100000, metavar="ROWS")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--page", type=int)
    options = parser.parse_args()
    schema = SCHEMA.read_text()
    if options.page:
        schema = re.sub(r"(pragma page_size = )\d+", rf"\g<1>{options.page}", schema)
    for left_over in (options.file, options.file + "-wal", options.file + "-shm"):
        if os.path.exists(left_over):
            os.unlink(left_over)
    catalogue = sqlite3.connect(options.file, isolation_level=None)
    catalogue.executescript(schema)
    catalogue.execute("pragma synchronous=off")
    catalogue.execute("begin")
    catalogue.execute("delete from mp3sTabelle")
    collection = Collection(options.seed)
    names = list(row(collection, 0))
    insert = "insert into mp3sTabelle (uid,{}) values ({})".format(
        ",".join(f"[{name}]" for name in names), ",".join("?" * (len(names) + 1)))
    catalogue.executemany(insert, ((i + 1, *row(collection, i).values()) for i in range(options.n)))
    rng = random.Random(options.seed)
    catalogue.executemany("insert into playlists (Playlist,UID,[position]) values (?,?,?)",
                          ((f"List {k}", rng.randint(1, options.n), p) for k in range(20) for p in range(1, 201)))
    catalogue.executemany("insert into cdarchives (CDArchive,UID) values (?,?)",
                          ((f"Archive {k}", rng.randint(1, options.n)) for k in range(10) for _ in range(500)))
    catalogue.execute("commit")
    catalogue.close()
    print(f"{options.n} rows, {os.path.getsize(options.file)} bytes", file=sys.stderr)


if __name__ == "__main__":
    main()
