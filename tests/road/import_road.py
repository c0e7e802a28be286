# SPDX-License-Identifier: GPL-3.0-or-later
"""import_road.py PROGRAM: the whole road of a new user, through the built program and from outside.

First start in an empty folder, welcome, import of a small library, the list, a search, a sort, the
details of a clicked row, the end; then the second start, which must find everything as it was.
Started by dev/drive.sh.
"""
import json
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import unicodedata

from drive import Program, wait

ROOT = pathlib.Path(__file__).resolve().parents[2]
FILES = 30


def check(holds, what):
    if not holds:
        raise AssertionError(what)


def check_equal(got, wanted, what):
    check(got == wanted, f"{what}:\n  got    {got!r}\n  wanted {wanted!r}")


def as_stored(text):
    """An import turns each quote of a tag into two apostrophes."""
    return text.replace("'", '"').replace('"', "''")


def make_library(folder):
    listing = folder.with_suffix(".list")
    subprocess.run([sys.executable, ROOT / "bench" / "make_library.py", folder, "-n", str(FILES), "--size", "9000",
                    "--list", listing], check=True)
    return [json.loads(line) for line in listing.read_text(encoding="utf-8").splitlines()]


def pass_welcome(program):
    """OK to the welcome; before it the start tells that there is no player."""
    title, text = program.box("OK", patience=30)
    check(title == "Warning" and text.startswith("No MP3-Player found."), f"an unexpected warning: {title}: {text}")
    welcome = program.find("frmStartInfos")
    check_equal(welcome.get_name(), "Welcome!", "the title of the welcome")
    program.click(program.find("cmdOK", root=welcome))
    wait(lambda: program.sees("frmStartInfos") is None, "the welcome to close")


def import_library(program, library):
    program.menu("File", "Import files...")
    dialog = program.find("frmImport")
    program.choose_folder(program.find("Command2", root=dialog), library)
    check_equal(program.text(program.find("lblScan", root=dialog)), f"{library}/", "the folder chosen")
    program.click(program.find("cmdOK", root=dialog))
    check_equal(program.box("OK")[1], f"Import {FILES} File(s)?", "the question before the import")
    title, text = program.box("OK", patience=60)
    check_equal((title, text), ("Import", f"{FILES} File(s) successfully imported."), "the box behind the import")


def check_list(program, tracks):
    wait(lambda: program.rows("ListView1") == FILES + 1, f"{FILES} rows and the demonstration row")
    titles = program.column("ListView1", "Songname")
    missing = {as_stored(track["title"]) for track in tracks} - set(titles)
    check(not missing, f"titles that are not in the list: {missing}")


def search_by_artist(program, tracks):
    artist = tracks[0]["artist"]
    expected = [track for track in tracks if artist.lower() in track["artist"].lower()]
    program.fill("cboArtistSearch", artist)
    program.click("cmdSuchen")
    wait(lambda: program.rows("ListView1") == len(expected), f"{len(expected)} rows by {artist}")
    check_equal(set(program.column("ListView1", "Artist")), {as_stored(artist)}, "the artists found")
    check_equal(sorted(program.column("ListView1", "Album")), sorted(as_stored(t["album"]) for t in expected),
                "the albums found")


def sort_and_look(program, tracks):
    table = program.find("ListView1")
    program.click(next(header for header in headers(table) if header.get_name() == "Songname"))
    wait(lambda: is_sorted(program.column("ListView1", "Songname")), "the list to be sorted by title")
    program.click(program.cell("ListView1", 2, 1))
    title = program.cell("ListView1", 2, 1).get_name()
    wait(lambda: program.text("txtTitelSave") == title, "the details of the clicked row")
    track = next(track for track in tracks if as_stored(track["title"]) == title)
    check_equal(program.text("txtAlbumSave"), as_stored(track["album"]), "the album among the details")
    check_equal(program.text("txtYearSave"), track["year"], "the year among the details")


def headers(table):
    from gi.repository import Atspi
    return [Atspi.Table.get_column_header(table, i) for i in range(Atspi.Table.get_n_columns(table))]


def place(character):
    """Blanks, marks, digits, letters; a letter with an accent beside the one without."""
    kind = unicodedata.category(character)[0]
    return "ZPSNL".find(kind), unicodedata.normalize("NFD", character.lower())[0]


def is_sorted(texts):
    places = [[place(character) for character in text] for text in texts]
    return places == sorted(places)


def leave(program):
    program.menu("File", "Exit")
    check_equal(program.wait_for_end(), 0, "the exit code")


def check_folder(folder, library, tracks):
    settings = (folder / "tunemeadow.INI").read_text(encoding="utf-8")
    for line in ("[CONFIG]", "firstrun=1", "WindowState=0"):
        check(line in settings.splitlines(), f"the settings lack {line}")
    with sqlite3.connect(folder / "mp3s.mdb") as catalogue:
        check_equal(catalogue.execute("pragma integrity_check").fetchone()[0], "ok", "the state of the catalogue")
        rows = dict(catalogue.execute("select location, Songname from mp3sTabelle where uid > 1"))
    wanted = {str(library / track["path"]): as_stored(track["title"]) for track in tracks}
    check_equal(rows, wanted, "the rows of the catalogue")


def walk_the_road(executable, work):
    library, folder = work / "music", work / "program"
    tracks = make_library(library)
    folder.mkdir()
    with Program(executable, folder) as program:
        pass_welcome(program)
        import_library(program, library)
        check_list(program, tracks)
        search_by_artist(program, tracks)
        sort_and_look(program, tracks)
        leave(program)
    check_folder(folder, library, tracks)
    with Program(executable, folder) as program:
        wait(lambda: program.rows("ListView1") == FILES + 1, "the list of the second start", 30)
        check(program.sees("frmStartInfos") is None, "the second start says welcome again")
        leave(program)
    check_folder(folder, library, tracks)


def main():
    with tempfile.TemporaryDirectory(prefix="tunemeadow-road-") as work:
        walk_the_road(sys.argv[1], pathlib.Path(work))


main()
