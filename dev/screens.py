# SPDX-License-Identifier: GPL-3.0-or-later
"""screens.py PROGRAM LIBRARY OUT: a picture of every window, as a new user meets them. Started by
dev/screens through dev/drive.sh, with scale and palette in the environment."""
import os
import pathlib
import subprocess
import sys
import tempfile
import time

from drive import Program, wait

ROOT = pathlib.Path(__file__).resolve().parent.parent


class Album:
    """Pictures of one run of the program."""

    def __init__(self, program, out):
        self.program = program
        self.out = out

    def take(self, name):
        time.sleep(0.4)  # menus fade, icons load
        self.program.picture(str(self.out / f"{name}.png"))

    def window(self, name, opened, close):
        """A window that is `opened` by a command and closed by the button `close`."""
        opened()
        window = self.program.find(name)
        self.take(name)
        self.program.click(self.program.find(close, root=window))
        wait(lambda: self.program.sees(name) is None, f"{name} to close")


def first_start(album):
    program = album.program
    program.find(role="alert", patience=30)
    album.take("warning_no_player")
    program.box("OK")
    welcome = program.find("frmStartInfos")
    album.take("frmStartInfos")
    program.click(program.find("cmdOK", root=welcome))
    wait(lambda: program.sees("frmStartInfos") is None, "the welcome to close")


def imported(album, library):
    program = album.program
    program.menu("File", "Import files...")
    dialog = program.find("frmImport")
    program.choose_folder(program.find("Command2", root=dialog), library)
    album.take("frmImport")
    program.click(program.find("cmdOK", root=dialog))
    program.find(role="alert")
    album.take("question_import")
    program.click(program.find(role="push button", text="OK", root=program.find(role="alert")))
    if program.sees("frmLoading"):
        program.picture(str(album.out / "frmLoading.png"))
    program.box("OK", patience=60)


def preferences(album):
    program = album.program
    program.menu("File", "Preferences...")
    window = program.find("frmPreferences")
    for number, page in enumerate(("Main", "Import", "Playing", "Saving", "MP3 En/Decoder"), 1):
        program.click(program.find(role="page tab", text=page, root=window))
        album.take(f"frmPreferences_{number}")
    program.click(program.find("cmdCancel", root=window))
    wait(lambda: program.sees("frmPreferences") is None, "the preferences to close")


def main_window(album):
    program = album.program
    program.click(program.cell("ListView1", 4, 1))
    wait(lambda: program.text("txtTitelSave"), "the details")
    for panel in (3, 2, 1):
        program.click(f"cmdSwitch_{panel - 1}")
        album.take(f"panel_{panel}")
    program.fill("cboArtistSearch", "an")
    program.click("cmdSuchen")
    program.wait(lambda: program.rows("ListView1") > 2, "a result")
    program.click(program.cell("ListView1", 2, 1))
    album.take("main")
    program.window_picture(str(album.out / "readme.png"))
    program.click("Image1")
    program.find("frmPicture")
    album.take("frmPicture")
    program.key("Escape")
    wait(lambda: program.sees("frmPicture") is None, "the large picture to close")
    program.menu("File")
    album.take("menu_file")
    program.key("Escape", "Escape")
    program.click("ButtonEx1")
    album.take("menu_history")
    program.key("Escape")
    program.click(program.cell("ListView1", 2, 1), button=3)
    album.take("menu_list")
    program.key("Escape")


def big_list(executable, out, work):
    """5,000 rows with long and with empty values, as the benchmarks have them."""
    folder = work / "big"
    folder.mkdir()
    subprocess.run([sys.executable, ROOT / "bench" / "make_catalogue.py", folder / "mp3s.mdb", "-n", "5000"],
                   check=True, stdout=subprocess.DEVNULL)
    (folder / "tunemeadow.INI").write_text("[CONFIG]\nfirstrun=1\nlblConfigWinamp=No MP3-Player\nchkRepair=0\n")
    with Program(executable, folder) as program:
        album = Album(program, out)
        program.wait(lambda: program.rows("ListView1") >= 5000, "5,000 rows", 30)
        album.take("list_5000")
        program.menu("View", "Autosize columns")
        album.take("list_5000_autosize")
        tree(album)


def tree(album):
    """Each kind of groups, the menu of a node, and the filter beside the window. The tree is gone
    through by keys: a node that is not in sight has no place to click on."""
    program = album.program
    program.click(program.find("TreeView1"))
    program.key("Home", "Down", "Down", "Menu")  # the database
    album.take("menu_tree")
    program.key("Escape")
    program.click(program.cell("ListView1", 5, 1))  # its folder opens
    wait(lambda: program.text("txtTitelSave"), "the details")
    album.take("tree_location")
    for kind, name in enumerate(("artist", "album", "genre", "year"), 1):
        program.click("cboTreeSelector")
        program.key("Home", *["Down"] * kind, "Return")
        program.click("cmdSeekto")
        album.take(f"tree_{name}")
    program.menu("Search", "Treeview Filter...")
    window = program.find("frmTreeviewFilter")
    program.key("Home", "Down", "Return", "Right", "Down", "Right")
    album.take("frmTreeviewFilter")
    program.click(program.find("cmdClose", root=window))
    wait(lambda: program.sees("frmTreeviewFilter") is None, "the treeview filter to close")


def main():
    executable, library, out = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3])
    out.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="Music-") as work:
        # Copied, so that the pictures show no path of the machine that they were made on.
        music = pathlib.Path(work) / "Collection"
        subprocess.run(["cp", "-r", "--sparse=always", library, music], check=True)
        with Program(executable, os.path.join(work, "program")) as program:
            album = Album(program, out)
            first_start(album)
            imported(album, music)
            main_window(album)
            album.window("frmConfigureColumns", lambda: program.menu("View", "Configure columns..."), "cmdCancel")
            preferences(album)
            album.window("frmEditor", lambda: program.click("cmdBigger_txtCommentSave"), "cmdCancel")
            program.menu("Help", "About...")
            album.take("about")
            program.box("OK")
        big_list(executable, out, pathlib.Path(work))


main()
