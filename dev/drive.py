# SPDX-License-Identifier: GPL-3.0-or-later
"""Drives the program from outside, as a person does: finds controls by their object name over AT-SPI,
moves the mouse, types, looks. Used by scripts that dev/drive.sh starts on a display and a session bus
of their own:

    from drive import Program
    with Program("build/dev/bin/tunemeadow", folder) as program:
        program.fill("cboArtistSearch", "Anna")
        program.click("cmdSuchen")
        program.wait(lambda: program.rows("ListView1") == 3, "three rows")

A control is named by its object name or by what find() returned. Every wait has an end, and says what
it waited for. What goes wrong inside the "with" leaves a picture of the display in TM_FAILED_PICTURE.
"""
import os
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version must be chosen first)

PATIENCE = 40  # seconds that a control may take to appear
CELLS = ("tree", "tree table", "table", "list")  # never walked into: a list may have a million cells


class Gone(AssertionError):
    """What was waited for did not come."""


def wait(condition, what, patience=PATIENCE):
    """Calls `condition` until it gives something true, and returns that."""
    end = time.monotonic() + patience
    while True:
        try:
            result = condition()
            if result:
                return result
        except GLib.Error:  # the object is gone, or the program is too busy to answer
            pass
        if time.monotonic() > end:
            raise Gone(f"waited {patience} s for {what}")
        time.sleep(0.05)


def children(accessible):
    found = (accessible.get_child_at_index(i) for i in range(accessible.get_child_count()))
    return [child for child in found if child is not None]


def walk(accessible, depth=0):
    yield accessible
    if depth < 20 and accessible.get_role_name() not in CELLS:
        for child in children(accessible):
            yield from walk(child, depth + 1)


def showing(accessible):
    return accessible.get_state_set().contains(Atspi.StateType.SHOWING)


def enabled(accessible):
    return accessible.get_state_set().contains(Atspi.StateType.ENABLED)


def xdotool(*arguments):
    return subprocess.run(["xdotool", *map(str, arguments)], check=True, stdout=subprocess.PIPE, text=True).stdout


class Program:
    """One run of the program, in a program folder of its own."""

    def __init__(self, executable, folder, arguments=(), **environment):
        # No data and no associations of this machine: the program shall behave the same everywhere.
        self.environment = {**os.environ, "TUNEMEADOW_FOLDER": str(folder), "TESTNAMES": "1",
                            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "XDG_DATA_DIRS": "/nonexistent",
                            "XDG_CONFIG_DIRS": "/nonexistent", **environment}
        self.command = [str(executable), *map(str, arguments)]

    def __enter__(self):
        Atspi.init()
        Atspi.set_timeout(3000, 10000)
        self.process = subprocess.Popen(self.command, env=self.environment, stdin=subprocess.DEVNULL)
        try:
            self.root = wait(self._application, f"{self.command[0]} on the accessibility bus", 30)
        except BaseException as failure:
            self.__exit__(type(failure))
            raise
        return self

    def __exit__(self, failure, *unused):
        if failure and os.environ.get("TM_FAILED_PICTURE"):
            self.picture(os.environ["TM_FAILED_PICTURE"])
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()

    def _application(self):
        if self.process.poll() is not None:
            raise Gone(f"{self.command[0]} ended with {self.process.returncode}")
        return next((a for a in children(Atspi.get_desktop(0)) if a.get_process_id() == self.process.pid), None)

    # Finding

    def _match(self, name, role, text, root):
        for accessible in walk(root or self.root):
            if name and accessible.get_description() != "#" + name:
                continue
            if role and accessible.get_role_name() != role:
                continue
            if text and accessible.get_name() != text:
                continue
            if showing(accessible):
                return accessible
        return None

    def find(self, name=None, role=None, text=None, root=None, patience=PATIENCE):
        """The control with that object name, role (as AT-SPI calls it) and shown text, once it is visible."""
        what = ", ".join(str(part) for part in (name, role, text) if part)
        return wait(lambda: self._match(name, role, text, root), what, patience)

    def sees(self, name=None, role=None, text=None, root=None):
        """find() without waiting: None where there is no such control."""
        try:
            return self._match(name, role, text, root)
        except GLib.Error:
            return None

    def control(self, wanted):
        return self.find(wanted) if isinstance(wanted, str) else wanted

    @staticmethod
    def wait(condition, what, patience=PATIENCE):
        return wait(condition, what, patience)

    # Doing

    def click(self, wanted, times=1, button=1):
        accessible = self.control(wanted)
        place = Atspi.Component.get_extents(accessible, Atspi.CoordType.SCREEN)
        # A check box is as wide as its row; its mark and words are at the left.
        x = place.x + (8 if accessible.get_role_name() in ("check box", "radio button") else place.width // 2)
        # The toolkit tells places in its own pixels, of which a scaled display has several each.
        scale = float(os.environ.get("QT_SCALE_FACTOR", "1"))
        xdotool("mousemove", "--sync", int(x * scale), int((place.y + place.height // 2) * scale),
                "click", "--repeat", times, "--delay", 40, button)

    @staticmethod
    def key(*keys):
        xdotool("key", *keys)

    def editor(self, wanted):
        """The text field of a control: itself, or the one inside a combo box."""
        accessible = self.control(wanted)
        if accessible.get_role_name() == "combo box":
            return next(a for a in walk(accessible) if a.get_role_name() == "text")
        return accessible

    def text(self, wanted):
        """What a field holds, or what a label, a button or a cell says."""
        accessible = self.control(wanted)
        if accessible.get_role_name() in ("combo box", "text"):
            return Atspi.Text.get_text(self.editor(accessible), 0, -1)
        return accessible.get_name()

    def fill(self, wanted, words):
        """Types `words` over what the field holds."""
        field = self.editor(wanted)
        self.click(field)
        xdotool("key", "ctrl+a", "Delete")
        if words:
            xdotool("type", "--delay", 8, words)
        wait(lambda: Atspi.Text.get_text(field, 0, -1) == words, f"the field to hold {words!r}", 10)

    def choose_folder(self, button, folder):
        """Presses a button that opens a folder dialog, and chooses `folder` there."""
        self.click(button)
        field = self.find("fileNameEdit")
        self.fill(field, str(folder))
        # The first Return may only close the list of suggestions.
        def closed():
            if self.sees("fileNameEdit") is None:
                return True
            self.key("Return")
            time.sleep(0.3)
            return False
        wait(closed, "the folder dialog to close")

    def menu(self, *path):
        for step in path:
            self.click(self.find(role="menu item", text=step))
            time.sleep(0.2)  # a menu takes clicks only when it stands

    def box(self, button, patience=PATIENCE):
        """Answers the message box in view; returns its title and its text."""
        box = self.find(role="alert", patience=patience)
        title = box.get_name()
        lines = [a.get_name() for a in walk(box) if a.get_role_name() == "label" and a.get_name()]
        self.click(self.find(role="push button", text=button, root=box))
        wait(lambda: self.sees(role="alert", text=title) is None, f"the box {title!r} to close")
        return title, "\n".join(lines)

    def wait_for_end(self, patience=PATIENCE):
        """The exit code, once the program has ended by itself."""
        wait(lambda: self.process.poll() is not None, "the end of the program", patience)
        return self.process.returncode

    # Lists

    def rows(self, wanted):
        return Atspi.Table.get_n_rows(self.control(wanted))

    def cell(self, wanted, row, column):
        return Atspi.Table.get_accessible_at(self.control(wanted), row, column)

    def column(self, wanted, header):
        """The texts of one column, by the caption of its header."""
        table = self.control(wanted)
        count = Atspi.Table.get_n_columns(table)
        captions = [Atspi.Table.get_column_header(table, i) for i in range(count)]
        place = [caption.get_name() if caption else "" for caption in captions].index(header)
        return [self.cell(table, row, place).get_name() for row in range(self.rows(table))]

    # Looking

    @staticmethod
    def picture(path):
        """Saves what the display shows."""
        os.makedirs(os.path.dirname(path) or ".", exist_ok=True)
        subprocess.run(["import", "-window", "root", path], check=True)

    @staticmethod
    def window_picture(path):
        """Saves the active window without its frame."""
        os.makedirs(os.path.dirname(path) or ".", exist_ok=True)
        subprocess.run(["import", "-window", xdotool("getactivewindow").strip(), path], check=True)
