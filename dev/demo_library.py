# SPDX-License-Identifier: GPL-3.0-or-later
"""A small library for the pictures of the windows: readable invented names and a cover for each album.

    python3 dev/demo_library.py OUT
"""
import pathlib
import random
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "bench"))
import make_library  # noqa: E402  (lies beside this folder)

ARTISTS = ("Marlow & Finch", "The Quiet Harbour", "Änne Brückner", "O'Dell Sisters", "Kestrel Parade", "Lina Voss Trio",
           "Northern Lanterns", "Señor Otoño", "Paper Orchard", "Hollow Pines")
FIRST = ("Slow", "Silver", "Borrowed", "Winter", "Distant", "Open", "Last", "Golden", "Hidden", "Early", "Salt",
         "Broken", "Evening", "Wild", "Sunday", "Little", "Paper", "Northern")
SECOND = ("River", "Letters", "Morning", "Lights", "Road", "Garden", "Water", "Windows", "Train", "Stars", "Meadow",
          "Bells", "Weather", "Birds", "Rooms", "Summer", "Streets", "Tide")
ENDINGS = ("", "", "", "", " Again", " for Anna", " (live)", ", Part Two", " Don't Wait", " at Dusk")
GENRES = (8, 13, 17, 32, 52, 80)
ALBUMS, TRACKS = 3, 9


def covers(folder, count):
    """A round sun over a ground of two colours, other ones for each album."""
    made = []
    for number in range(count):
        hue, sun = number * 47 % 360, 120 + number * 53 % 240
        path = folder / f"cover{number}.jpg"
        subprocess.run(["convert", "-size", "480x480", f"gradient:hsl({hue},45%,72%)-hsl({(hue + 40) % 360},50%,28%)",
                        "-fill", f"hsl({(hue + 180) % 360},60%,85%)", "-draw", f"circle {sun},190 {sun + 70},190",
                        "-fill", f"hsl({(hue + 60) % 360},45%,20%)", "-draw", "rectangle 0,350 480,480",
                        "-quality", "85", str(path)], check=True)
        made.append(path.read_bytes())
        path.unlink()
    return made


def tracks(rng):
    for artist in ARTISTS:
        genre = rng.choice(GENRES)
        for _ in range(ALBUMS):
            album = {"artist": artist, "genre": genre, "album": f"{rng.choice(FIRST)} {rng.choice(SECOND)}",
                     "year": str(rng.randint(1968, 2009)), "composer": rng.choice(ARTISTS), "encodedby": "lame 3.100",
                     "originalartist": "", "url": "http://music.example/", "copyright": ""}
            for number in range(1, TRACKS + 1):
                title = f"{rng.choice(FIRST)} {rng.choice(SECOND)}{rng.choice(ENDINGS)}"
                yield {**album, "title": title, "trackno": number, "bpm": str(rng.randint(64, 168)),
                       "comment": rng.choice(("", "from the old tape", "bought on the market in May",
                                              "the long version, with the second verse that is on no other record"))}


def main():
    out = pathlib.Path(sys.argv[1])
    out.mkdir(parents=True)
    rng = random.Random(20)
    streams = [make_library.sound(rng, rate, 0, False, 20000)[0] for rate in (128, 192, 256)]
    pictures = covers(out, len(ARTISTS) * ALBUMS)
    for i, track in enumerate(tracks(rng)):
        path = out / track["artist"] / track["album"] / f"{track['trackno']:02} - {track['title']}.mp3"
        path.parent.mkdir(parents=True, exist_ok=True)
        head = make_library.id3v2(rng, dict(track), pictures[i // TRACKS])
        with open(path, "wb") as file:  # as long as a song is, and nearly all of it a hole
            file.write(head + rng.choice(streams))
            file.seek(rng.randint(2500000, 8000000))
            file.write(make_library.id3v1(track))


if __name__ == "__main__":
    main()
