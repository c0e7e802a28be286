#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""measure.py [--runs N] [FIGURE...]: the figures of the program, each beside its floor. See bench/run.

FIGURE: import again double kill save list tree playlist million start (all of them unless told).

Every run is a whole process: its user and system time and its peak memory are what the system says
when it ends. A floor is run in turn with what is measured against it, and a ratio is the median of
the ratios of the pairs, so that a busy minute of the machine hurts both alike. Files are in the page
cache. The windows are driven by build/release/bin/window_bench on the offscreen platform, in a program
folder of its own (TUNEMEADOW_FOLDER):

  window_bench import LIBRARY   one import through the window, progress shown, final search included
  window_bench list             the searches and sorts, one JSON object for each: figure, ms, rows
  window_bench save ARTIST      sets the artist of every track of the catalogue
  window_bench tree             the tree of folders: filled, renewed after a search, a node clicked
  window_bench start            starts to the usable window and ends
"""
import argparse
import json
import os
import pathlib
import shutil
import signal
import sqlite3
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
RELEASE = ROOT / "build" / "release"
DATA = ROOT / "build" / "bench"
FILES = 20000
SAVED = 2000
ROWS = 100000
LISTS = "select Artist,year,Songname,album,Genrereal,Situation,Preference,mood,tempo FROM mp3stabelle"
TREE = "SELECT location FROM mp3sTabelle where location<>'' group by location order by location"
PLAYLIST = 10000


def program(name):
    found = [p for p in RELEASE.rglob(name) if p.is_file() and os.access(p, os.X_OK)]
    return found[0] if found else None


class Finished:
    """What one process took: seconds of CPU and on the clock, peak memory in MiB, its output."""

    def __init__(self, command, environment=None):
        began = time.monotonic()
        with open(DATA / "output", "w+b") as output:
            process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT,
                                       env={**os.environ, **(environment or {})})
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            self.wall = time.monotonic() - began
            output.seek(0)
            self.output = output.read().decode("utf-8", "replace")
        self.cpu = usage.ru_utime + usage.ru_stime
        self.peak_mib = usage.ru_maxrss / 1024
        if process.returncode != 0:
            sys.exit(f"{' '.join(map(str, command))} ended with {process.returncode}:\n{self.output[-2000:]}")

    def figures(self):
        """The JSON objects among the lines of the output, by the name of their figure."""
        objects = [json.loads(line) for line in self.output.splitlines() if line.startswith("{")]
        return {entry["figure"]: entry for entry in objects}


class Table:
    """Prints a row for each figure as soon as it is known; `missed` names those over their target."""

    LAYOUT = "{:<46} {:>12} {:>12} {:>7}   {}"

    def __init__(self):
        self.missed = []
        print(self.LAYOUT.format("figure (medians)", "measured", "floor", "ratio", "target"))
        print("-" * 110)

    def row(self, figure, measured, floor, ratio, target, holds):
        verdict = "" if holds is None else " (holds)" if holds else " (MISSED)"
        if holds is False:
            self.missed.append(figure)
        print(self.LAYOUT.format(figure, measured, floor, ratio, target + verdict), flush=True)

    def against_floor(self, figure, pairs, unit, digits, limit, extra=0.0):
        """Pairs of (measured, floor); the target is `limit` times the floor and `extra` above it."""
        measured, floor = (statistics.median(side) for side in zip(*pairs))
        ratio = statistics.median((m - extra) / f for m, f in pairs)
        told = f"at most {limit} x floor" + (f" + {extra:g} {unit}" if extra else "")
        self.row(figure, f"{measured:.{digits}f} {unit}", f"{floor:.{digits}f} {unit}", f"{ratio:.2f}", told,
                 ratio <= limit)

    def against_limit(self, figure, values, unit, digits, limit):
        measured = statistics.median(values)
        self.row(figure, f"{measured:.{digits}f} {unit}", "", "", f"at most {limit:g} {unit}", measured <= limit)


def library(files):
    folder = DATA / f"library-{files}"
    if not (DATA / f"library-{files}.done").exists():
        print(f"making {folder.relative_to(ROOT)} ...", file=sys.stderr)
        shutil.rmtree(folder, ignore_errors=True)
        subprocess.check_call([sys.executable, ROOT / "bench" / "make_library.py", folder, "-n", str(files)])
        (DATA / f"library-{files}.done").touch()
    for path in folder.rglob("*.mp3"):  # into the page cache, whoever ran before
        path.read_bytes()
    return folder


def catalogue(rows):
    path = DATA / f"catalogue-{rows}.mdb"
    if not path.exists():
        print(f"making {path.relative_to(ROOT)} ...", file=sys.stderr)
        unfinished = path.with_suffix(".new")
        subprocess.check_call([sys.executable, ROOT / "bench" / "make_catalogue.py", unfinished, "-n", str(rows)])
        unfinished.rename(path)
    return path


class ProgramFolder:
    """A folder as a first start leaves it, welcome done, with the catalogue given or a fresh one."""

    def __init__(self, name, mdb=None, **settings):
        self.path = DATA / name
        shutil.rmtree(self.path, ignore_errors=True)
        self.path.mkdir(parents=True)
        shipped = next(p for p in RELEASE.rglob("mp3s.mdb") if DATA not in p.parents)
        shutil.copy(mdb or shipped, self.path / "mp3s.mdb")
        if (shipped.parent / "monster.mp3").exists():
            shutil.copy(shipped.parent / "monster.mp3", self.path)
        values = {"firstrun": 1, "chkBackup": 0, "chkRepair": 0, "chkWarnGlobal": 0,
                  "lblConfigWinamp": "No MP3-Player", **settings}
        text = "[CONFIG]\n" + "".join(f"{key}={value}\n" for key, value in values.items())
        for base in ("tunemeadow", "window_bench"):
            (self.path / f"{base}.INI").write_text(text)
        self.environment = {"TUNEMEADOW_FOLDER": str(self.path), "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8",
                            "XDG_RUNTIME_DIR": str(self.path)}

    def run(self, *arguments):
        return Finished([program("window_bench"), *map(str, arguments)], self.environment)

    def rows(self):
        with sqlite3.connect(f"file:{self.path / 'mp3s.mdb'}?mode=ro", uri=True) as db:
            return db.execute("select count(*) from mp3sTabelle").fetchone()[0]


def scan_floor(folder):
    database = DATA / "floor.mdb"
    database.unlink(missing_ok=True)
    return Finished([program("scan_floor"), str(folder), str(database)])


def measure_import(table, runs):
    music = library(FILES)
    pairs, peaks, gaps = [], [], []
    for _ in range(runs):
        folder = ProgramFolder("import")
        done = folder.run("import", music)
        if folder.rows() < FILES:
            sys.exit(f"only {folder.rows()} rows after the import of {FILES} files")
        pairs.append((done.cpu, scan_floor(music).cpu))
        peaks.append(done.peak_mib)
        gaps += [figure["ms"] for name, figure in done.figures().items() if name == "longest_gap"]
    table.against_floor(f"import of {FILES:,} files, CPU", pairs, "s", 2, 2.0)
    table.against_limit("  its peak memory", peaks, "MiB", 0, 100)
    if gaps:
        table.against_limit("  longest time without a repaint", gaps, "ms", 0, 100)


def measure_again(table, runs):
    music = library(FILES)
    pairs = []
    for _ in range(runs):
        folder = ProgramFolder("again")
        first = folder.run("import", music)
        rows = folder.rows()
        pairs.append((folder.run("import", music).cpu, first.cpu))
        if folder.rows() != rows:
            sys.exit(f"the second import changed {rows} rows into {folder.rows()}")
    table.against_floor("the same folder again (floor: the first time)", pairs, "s", 2, 1.0)


def measure_double(table, runs):
    small, large = library(FILES), library(2 * FILES)
    pairs = [(ProgramFolder("double").run("import", large).cpu, ProgramFolder("double").run("import", small).cpu)
             for _ in range(runs)]
    table.against_floor(f"import of {2 * FILES:,} files (floor: {FILES:,})", pairs, "s", 2, 2.1)


def measure_kill(table, runs):
    """Kills an import in its middle: every row that another process had seen must still be there."""
    music = library(FILES)
    for _ in range(runs):
        folder = ProgramFolder("kill")
        process = subprocess.Popen([program("window_bench"), "import", str(music)],
                                   env={**os.environ, **folder.environment},
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        seen = 0
        while process.poll() is None and seen < FILES // 2:
            time.sleep(0.01)
            seen = folder.rows()
        if process.poll() is not None:
            sys.exit("the import ended before it could be killed")
        process.send_signal(signal.SIGKILL)
        process.wait()
        with sqlite3.connect(folder.path / "mp3s.mdb") as db:
            kept = db.execute("select count(*) from mp3sTabelle").fetchone()[0]
            whole = db.execute("pragma integrity_check").fetchone()[0]
    table.row("killed in the middle: rows seen before, kept", f"{kept}", f"{seen}", "", f"all of them; {whole}",
              kept >= seen and whole == "ok")


def lengths(folder):
    return {path: path.stat().st_size for path in folder.rglob("*.mp3")}


def other_savers(music, artist):
    """CPU seconds of other programs that set the artist of every file; those that are installed.
    kid3-cli gets a hundred files at a time: it is slower with more."""
    paths = [str(path) for path in sorted(music.rglob("*.mp3"))]
    commands = {"mid3v2": (["mid3v2", "-a", artist], len(paths)),
                "kid3-cli": (["kid3-cli", "-c", f"set artist '{artist}'"], 100)}
    return {name: sum(Finished([*command, *paths[at:at + step]], {"QT_QPA_PLATFORM": "offscreen"}).cpu
                      for at in range(0, len(paths), step))
            for name, (command, step) in commands.items() if shutil.which(name)}


def measure_save(table, runs):
    """A mass save of files whose new tag fits, journal and catalogue included. A first save makes
    the room; the floor writes the same bytes over and over again."""
    music = DATA / "save-library"
    shutil.rmtree(music, ignore_errors=True)
    shutil.copytree(library(SAVED), music)
    folder = ProgramFolder("save", chkAutoComment=0)
    folder.run("import", music)
    mdb = folder.path / "mp3s.mdb"
    with sqlite3.connect(mdb) as db:
        db.execute("delete from mp3sTabelle where location like '%monster.mp3'")
    folder.run("save", "The Makers of Room")
    before = lengths(music)
    pairs, walls = [], []
    for number in range(runs):
        done = folder.run("save", f"Artist {number}").figures()
        if done["save"]["rows"] != SAVED:
            sys.exit(f"{done['save']['rows']} of {SAVED} rows were saved")
        floor = Finished([program("save_floor"), str(mdb), f"Artist {number}"])
        pairs.append((done["save"]["ms"], floor.cpu * 1000))
        walls.append(done["save_wall"]["ms"])
    table.against_floor(f"mass save of {SAVED:,} files, CPU", pairs, "ms", 0, 3.0)
    table.row("  on the clock, synced", f"{statistics.median(walls):.0f} ms", "", "", "", None)
    table.row("  files whose length has changed", str(sum(lengths(music)[p] != n for p, n in before.items())), "", "",
              "0", lengths(music) == before)
    for name, seconds in other_savers(music, "Artist 0").items():
        ours = statistics.median(m for m, _ in pairs)
        table.row(f"  against {name}, tags alone", f"{ours:.0f} ms", f"{seconds * 1000:.0f} ms",
                  f"{ours / seconds / 1000:.2f}", "ahead", ours < seconds * 1000)


def sql_floor(mdb, statement):
    """CPU milliseconds of bare SQLite on the statement, all texts fetched, the median of some runs."""
    output = Finished([program("sql_floor"), str(mdb), statement]).output.split()
    return float(output[output.index("cpu_ms") + 1])


def list_floor(rows):
    output = Finished([program("list_floor"), str(rows)], {"QT_QPA_PLATFORM": "offscreen"}).output.split()
    return {key: float(output[output.index(key) + 1]) for key in ("fill", "show", "sort", "memory")}


def measure_list(table, runs):
    mdb = catalogue(ROWS)
    pairs = {}
    memory = []
    for _ in range(runs):
        figures = ProgramFolder("list", mdb).run("list").figures()
        floor = list_floor(ROWS)
        for name, figure in figures.items():
            if name == "memory":
                memory.append((figure["mib"], floor["memory"]))
            elif name.startswith("sort"):
                pairs.setdefault(name, []).append((figure["ms"], floor["sort"]))
            elif name in ("search", "everything"):
                pairs.setdefault(name, []).append((figure["ms"], sql_floor(mdb, figure["statement"])))
    for name, values in pairs.items():
        if name == "search":
            table.against_floor(f"search in {ROWS:,} rows, press to painted list", values, "ms", 0, 1.2, 15)
        elif name == "everything":
            table.against_floor(f"all {ROWS:,} rows into the list", values, "ms", 0, 2.0)
        else:
            table.against_floor(f"{name.replace('_', ' by ', 1)}", values, "ms", 0, 4.0)
    table.against_floor("memory that the list adds", memory, "MiB", 0, 2.0)


def measure_playlist(table, runs):
    pairs, orders = [], []
    for _ in range(runs):
        mdb = ProgramFolder("playlist", catalogue(ROWS)).path / "mp3s.mdb"
        with sqlite3.connect(mdb) as db:  # a file that an older schema has made
            db.execute("create index if not exists tracks_of_playlists on playlists (Playlist, UID)")
        figures = Finished([program("playlist_bench"), str(mdb), str(PLAYLIST)]).figures()
        pairs.append((figures["add"]["ms"], figures["floor"]["ms"]))
        orders.append(max(figures["order"]["wall_ms"], figures["order_again"]["wall_ms"]))
    table.against_floor(f"{PLAYLIST:,} rows into a playlist, CPU", pairs, "ms", 0, 2.0)
    table.against_limit("  their order stored, on the clock", orders, "ms", 0, 1000)


def measure_tree(table, runs):
    mdb = catalogue(ROWS)
    filled, again, clicks = [], [], []
    for _ in range(runs):
        figures = ProgramFolder("tree", mdb).run("tree").figures()
        floor = sql_floor(mdb, figures["tree"]["statement"])
        filled.append((figures["tree"]["ms"], floor))
        again.append((figures["tree_again"]["ms"], floor))
        clicks.append(figures["tree_click"]["ms"])
    table.against_floor(f"tree of folders over {ROWS:,} rows, painted", filled, "ms", 0, 2.0)
    table.against_floor("  after a search that wrote nothing", again, "ms", 0, 0.2)
    table.against_limit("  a click on a folder, above its search", clicks, "ms", 0, 50)


def measure_million(table, runs):
    mdb = catalogue(10 * ROWS)
    done = ProgramFolder("million", mdb).run("list")
    table.against_limit("a million rows: peak memory", [done.peak_mib], "MiB", 0, 1200)
    for name, figure in done.figures().items():
        if "ms" in figure:
            table.row(f"  {name}", f"{figure['ms']:.0f} ms", "", "", "works", None)


def measure_start(table, runs):
    mdb = catalogue(ROWS)
    table.against_limit(f"start with {ROWS:,} rows to a usable window, CPU",
                        [ProgramFolder("start", mdb).run("start").cpu for _ in range(runs)], "s", 2, 1.2)
    backed_up = [ProgramFolder("start", mdb, chkBackup=1).run("start").cpu for _ in range(runs)]
    table.row("  with the backup that a start makes", f"{statistics.median(backed_up):.2f} s", "", "", "", None)
    measure_second_start(table, runs)


def measure_second_start(table, runs):
    """A start after one that has written nothing, with backup and repair: the second, which takes the
    compacted copy over, and a later one. The floor reads what a start reads: lists, tree and rows."""
    mdb = catalogue(5 * ROWS)
    figures = {"second": [], "later": []}
    for _ in range(runs):
        folder = ProgramFolder("start", mdb, chkBackup=1, chkRepair=1)
        folder.run("start")
        for _ in range(600):  # the tool makes its copy in the background
            if (folder.path / "compact.mdb").exists():
                break
            time.sleep(0.1)
        for values in figures.values():
            done = folder.run("start")
            rows = done.figures()["start"]["statement"]
            values.append((done.cpu, sum(sql_floor(mdb, text) for text in (LISTS, TREE, rows)) / 1000))
    for name, pairs in figures.items():
        table.against_floor(f"{name} start with {5 * ROWS:,} rows, CPU", pairs, "s", 2, 1.3)


FIGURES = {"import": measure_import, "again": measure_again, "double": measure_double, "kill": measure_kill,
           "save": measure_save, "list": measure_list, "tree": measure_tree, "playlist": measure_playlist,
           "million": measure_million, "start": measure_start}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("figures", nargs="*", metavar="FIGURE", help=" ".join(FIGURES))
    options = parser.parse_args()
    unknown = set(options.figures) - set(FIGURES)
    if unknown:
        parser.error(f"no such figure: {' '.join(sorted(unknown))}")
    for needed in ("window_bench", "scan_floor", "save_floor", "list_floor", "sql_floor", "playlist_bench"):
        if program(needed) is None:
            sys.exit(f"build/release has no {needed}: bench/run builds it")
    DATA.mkdir(parents=True, exist_ok=True)
    table = Table()
    for name in options.figures or FIGURES:
        FIGURES[name](table, options.runs)
    if table.missed:
        sys.exit(f"\n{len(table.missed)} figure(s) over their target.")


if __name__ == "__main__":
    main()
