#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""make_library.py OUT [-n FILES] [--size BYTES] [--seed N] [--list FILE]

Makes a library of MP3 files for the benchmarks and for the tests from outside, one folder for each
artist and album. The same arguments make the same names, bytes and times. Of the files

  all   carry ID3v2.3 with 8 to 12 frames, ID3v1.1 and MPEG-1 layer III frames of silence;
  10 %  carry a picture of 60 KB;         5 %  are of variable bit rate, with a Xing header;
   5 %  have their texts in UTF-16;       8 %  have accented letters in Latin-1;
   4 %  have an apostrophe in the title and in the file name.

--size is the mean size of a file without its picture. --list writes one JSON object a file: its
path below OUT and the texts of its tag.
"""
import argparse
import json
import os
import pathlib
import random
import struct
import sys

TRACKS_PER_ALBUM = 10
ALBUMS_PER_ARTIST = 4
PICTURE_BYTES = 60000
FIRST_TIME = 1100000000  # seconds; each file is one minute younger than the one before

ONSETS = "b c d f g h j k l m n p r s t v w br cl dr fl gr pl sk st tr".split()
VOWELS = "a e i o u ai ea io ou".split()
CODAS = ["", "", "n", "r", "l", "s", "t", "nd", "rk", "st"]
ACCENTED = "äöüÄÖÜéèçñåøß"
GENRES = {0: "Blues", 1: "Classic Rock", 4: "Disco", 7: "Hip-Hop", 8: "Jazz", 9: "Metal", 13: "Pop",
          16: "Reggae", 17: "Rock", 18: "Techno", 24: "Soundtrack", 32: "Classical", 52: "Electronic",
          80: "Folk", 98: "Easy Listening"}
BITRATES = (0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320)
RATES = (44100, 48000, 32000)


def word(rng):
    return "".join(rng.choice(ONSETS) + rng.choice(VOWELS) + rng.choice(CODAS) for _ in range(rng.randint(1, 3)))


def words(rng, low, high):
    return " ".join(word(rng) for _ in range(rng.randint(low, high)))


def title_of(rng):
    title = words(rng, 1, 5).title()
    kind = rng.random()
    if kind < 0.08:
        place = rng.randrange(len(title))
        return title[:place] + rng.choice(ACCENTED) + title[place:]
    if kind < 0.12:
        return f"{title}'s {word(rng).title()}"
    return title


class Collection:
    """The texts of file number i. An artist's albums follow each other, as do an album's tracks."""

    def __init__(self, seed):
        self.seed = seed
        self.album_number = None

    def _album(self, number):
        artist_number = number // ALBUMS_PER_ARTIST
        rng = random.Random(f"artist {self.seed} {artist_number}")
        artist = {"artist": words(rng, 1, 3).title(), "genre": rng.choice(list(GENRES)),
                  "url": f"http://{word(rng)}{word(rng)}.example/", "composer": words(rng, 2, 2).title()}
        rng = random.Random(f"album {self.seed} {number}")
        self.album = {**artist, "album": words(rng, 1, 4).title(), "year": str(rng.randint(1962, 2008)),
                      "encodedby": f"{word(rng)} {rng.randint(1, 3)}.{rng.randint(0, 99):02}"}
        self.folder = f"{artist['artist']} {artist_number}/{self.album['album']} {number}"
        self.album_number = number

    def track(self, i):
        if self.album_number != i // TRACKS_PER_ALBUM:
            self._album(i // TRACKS_PER_ALBUM)
        rng = random.Random(f"track {self.seed} {i}")
        track = {**self.album, "title": title_of(rng), "trackno": i % TRACKS_PER_ALBUM + 1,
                 "comment": words(rng, 2, 9), "bpm": str(rng.randint(60, 190)),
                 "originalartist": words(rng, 1, 2).title(),
                 "copyright": f"{self.album['year']} {self.album['artist']}"}
        track["path"] = f"{self.folder}/{track['trackno']:02} - {track['title']}.mp3"
        return rng, track


def frame(bitrate, rate_index, mono, padding, content):
    """One MPEG-1 layer III frame without CRC; `content` stands behind 4 bytes of header."""
    length = 144000 * bitrate // RATES[rate_index] + padding
    header = bytes((0xFF, 0xFB, BITRATES.index(bitrate) << 4 | rate_index << 2 | padding << 1,
                    (3 << 6 if mono else 1 << 6) | 4))
    return header + content[:length - 4].ljust(length - 4, b"\0")


def sound(rng, bitrate, rate_index, mono, length):
    """Frames of `length` bytes or a little more, and where each of them ends."""
    # Side information of zeros says silence; the bytes behind it are never decoded. No byte is 255,
    # so that only a real header looks like one.
    side = bytes(17 if mono else 32)
    filler = bytes(rng.randrange(255) for _ in range(1200))
    out, ends, rest = bytearray(), [], 0
    while len(out) < length:
        rest += 144000 * bitrate % RATES[rate_index]
        padding = rest >= RATES[rate_index]
        rest -= RATES[rate_index] * padding
        out += frame(bitrate, rate_index, mono, int(padding), side + filler)
        ends.append(len(out))
    return bytes(out), ends


def cut_at_frame(stream, length):
    data, ends = stream
    return data[:next((end for end in ends if end >= length), ends[-1])]


def xing(frames, size):
    contents = bytes(min(254, 256 * k // 100) for k in range(100))
    return frame(128, 0, False, 0, bytes(32) + b"Xing" + struct.pack(">III", 7, frames, size) + contents)


def picture(rng):
    """A grey JPEG of 64 by 64, brought to its size by comments, which every reader skips."""
    def segment(marker, data):
        return bytes((0xFF, marker)) + struct.pack(">H", len(data) + 2) + data
    one_code = b"\1" + bytes(15) + b"\0"  # a single code of one bit, for "nothing follows"
    end = (segment(0xDB, b"\0" + b"\1" * 64) + segment(0xC0, b"\x08\0\x40\0\x40\1\1\x11\0")
           + segment(0xC4, b"\0" + one_code) + segment(0xC4, b"\x10" + one_code)
           + segment(0xDA, b"\1\1\0\0\x3f\0") + bytes(16) + b"\xff\xd9")
    start = b"\xff\xd8" + segment(0xE0, b"JFIF\0\1\1\0\0\1\0\1\0\0")
    filler = bytes(rng.randrange(255) for _ in range(PICTURE_BYTES - len(start) - len(end) - 4))
    return start + segment(0xFE, filler) + end


def v2_frame(name, body):
    return name + struct.pack(">IH", len(body), 0) + body


def v2_text(name, text, wide):
    return v2_frame(name, b"\1\xff\xfe" + text.encode("utf-16-le") if wide else b"\0" + text.encode("latin-1"))


def id3v2(rng, track, image):
    wide = rng.random() < 0.05
    genre = f"({track['genre']})"
    if rng.random() < 0.5:
        genre += GENRES[track["genre"]]
    frames = [v2_text(name, text, wide) for name, text in (
        (b"TIT2", track["title"]), (b"TPE1", track["artist"]), (b"TALB", track["album"]), (b"TYER", track["year"]),
        (b"TRCK", str(track["trackno"])), (b"TCON", genre))]
    comment = track["comment"]
    frames.append(v2_frame(b"COMM", b"\1eng\xff\xfe\0\0\xff\xfe" + comment.encode("utf-16-le") if wide
                           else b"\0eng\0" + comment.encode("latin-1")))
    # 8 to 12 frames with the seven above; those that are left out are not in the file at all.
    optional = [(b"TCOM", "composer"), (b"TCOP", "copyright"), (b"TENC", "encodedby"), (b"TOPE", "originalartist"),
                (b"TBPM", "bpm"), (b"WXXX", "url")]
    kept = rng.sample(optional, rng.randint(1, 5 if image is None else 4))
    for name, key in optional:
        if (name, key) not in kept:
            track[key] = ""
        elif name == b"WXXX":
            frames.append(v2_frame(name, b"\0\0" + track[key].encode("latin-1")))
        else:
            frames.append(v2_text(name, track[key], wide))
    if image is not None:
        frames.append(v2_frame(b"APIC", b"\0image/jpeg\0\3\0" + image))
    data = b"".join(frames) + bytes(rng.choice((0, 512, 1024, 2048)))
    n = len(data)
    return b"ID3\3\0\0" + bytes((n >> 21 & 127, n >> 14 & 127, n >> 7 & 127, n & 127)) + data


def id3v1(track):
    def field(text, length):
        return text.encode("latin-1")[:length].ljust(length, b"\0")
    return (b"TAG" + field(track["title"], 30) + field(track["artist"], 30) + field(track["album"], 30)
            + field(track["year"], 4) + field(track["comment"], 28) + bytes((0, track["trackno"], track["genre"])))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("out", type=pathlib.Path)
    parser.add_argument("-n", type=int, default=20000, dest="files")
    parser.add_argument("--size", type=int, default=24000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--list", type=pathlib.Path)
    options = parser.parse_args()
    if options.out.is_dir() and any(options.out.iterdir()):
        sys.exit(f"{options.out} is not empty")

    rng = random.Random(options.seed)
    longest = 2 * options.size
    streams = [sound(rng, *form, longest) for form in (
        (128, 0, False), (160, 0, False), (192, 0, False), (192, 1, False), (256, 0, False), (320, 0, False),
        (64, 2, True), (96, 0, True))]
    images = [picture(rng) for _ in range(8)]
    collection = Collection(options.seed)
    folder = None
    lines = []
    for i in range(options.files):
        rng, track = collection.track(i)
        image = rng.choice(images) if rng.random() < 0.10 else None
        head = id3v2(rng, track, image)
        audio_size = max(4000, int(options.size * rng.uniform(0.6, 1.4)) - len(head) + (len(image) if image else 0))
        audio = cut_at_frame(rng.choice(streams), audio_size)
        if rng.random() < 0.05:
            audio = xing(max(1, len(audio) // 480), len(audio)) + audio
        path = options.out / track["path"]
        if path.parent != folder:
            folder = path.parent
            folder.mkdir(parents=True, exist_ok=True)
        path.write_bytes(head + audio + id3v1(track))
        os.utime(path, (FIRST_TIME + 60 * i,) * 2)
        if options.list:
            lines.append(json.dumps({**track, "genre": GENRES[track["genre"]]}, ensure_ascii=False))
    if options.list:
        options.list.write_text("".join(line + "\n" for line in lines), encoding="utf-8")


if __name__ == "__main__":
    main()
