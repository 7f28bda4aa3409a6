#!/usr/bin/python3
"""A screen reader that follows a window of Zolt: it compares what it is told with what it reads.
Usage: screen_reader.py ZOLT --log|--full-emulation (on a session bus and a display of its own)."""
import subprocess
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

warnings.simplefilter("ignore", DeprecationWarning)  # Qt 6.4 has only the old call for lines

PATIENCE = 60  # seconds; only a failing test waits as long
PROMPT = "ready> "
MOST_INSERTIONS = 10  # a second


def fail(what):
    print(what)
    sys.exit(1)


def expect(what, expected, found):
    if expected != found:
        fail(f"{what}:\n  expected: {expected!r}\n  found:    {found!r}")


def pump(seconds=0.05):
    """Takes in what arrives for so long."""
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if not GLib.MainContext.default().iteration(False):
            time.sleep(0.005)


def await_that(what, condition):
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        try:
            if condition():
                return
        except GLib.Error:
            pass  # it is not there yet, or no longer
        pump()
    fail(f"timed out: {what}")


def find(element, role):
    if element is None:
        return None
    if element.get_role() == role:
        return element
    children = (element.get_child_at_index(index) for index in range(element.get_child_count()))
    return next((found for child in children if (found := find(child, role))), None)


class Reader:
    """Keeps a copy of the terminal's text, changed only by what it is told."""

    def __init__(self, terminal):
        self.terminal = terminal
        self.copy = self.text()
        self.inserted = []
        self.caret = None
        self.selections = 0
        self.wrong = None
        self.listener = Atspi.EventListener.new(self.take)
        for event in ("object:text-changed:insert", "object:text-changed:delete", "object:text-caret-moved",
                      "object:text-selection-changed"):
            self.listener.register(event)

    def text(self):
        return Atspi.Text.get_text(self.terminal, 0, Atspi.Text.get_character_count(self.terminal))

    def take(self, event):
        if event.source.get_role() != Atspi.Role.TERMINAL:
            return
        kind, at, length = event.type, event.detail1, event.detail2
        if kind.startswith("object:text-changed:insert"):
            self.inserted.append(event.any_data)
            self.copy = self.copy[:at] + event.any_data + self.copy[at:]
        elif kind.startswith("object:text-changed:delete"):
            if self.copy[at:at + length] != event.any_data:
                self.wrong = f"{event.any_data!r} is removed, but {self.copy[at:at + length]!r} stands there"
            self.copy = self.copy[:at] + self.copy[at + length:]
        elif kind.startswith("object:text-caret-moved"):
            self.caret = at
        elif kind.startswith("object:text-selection-changed"):
            self.selections += 1

    def agrees(self):
        if self.wrong:
            fail(self.wrong)
        return self.copy == self.text()


def xdotool(*arguments):
    subprocess.run(["xdotool", *arguments], check=True, stdout=subprocess.DEVNULL)


def type_line(text):
    xdotool("type", "--delay", "20", text)
    xdotool("key", "Return")


def check(zolt, display, started):
    xdotool("search", "--sync", "--onlyvisible", "--pid", str(started.pid), "--name", "^Zolt$", "windowfocus", "--sync")
    await_that("a terminal on the bus", lambda: find(Atspi.get_desktop(0), Atspi.Role.TERMINAL) is not None)
    terminal = find(Atspi.get_desktop(0), Atspi.Role.TERMINAL)
    expect("its name", "Terminal", terminal.get_name())
    reader = Reader(terminal)
    await_that("the prompt", lambda: PROMPT in reader.text())
    await_that("the prompt in what it is told", reader.agrees)

    # What is typed.
    xdotool("type", "--delay", "20", "echo spo''ken")
    await_that("the typed line", lambda: "echo spo''ken" in reader.text() and reader.agrees())
    typed = reader.text().index("echo spo''ken") + len("echo spo''ken")
    expect("the caret", typed, Atspi.Text.get_caret_offset(terminal))
    await_that("the caret to be told", lambda: reader.caret == typed)

    # What is printed.
    reader.inserted.clear()
    xdotool("key", "Return")
    await_that("the output", lambda: "spoken" in "".join(reader.inserted) and reader.agrees())

    # Looks.
    type_line(r"printf '\033[1;31mbo''ld\033[m plain\n'")
    await_that("bold text", lambda: "bold plain" in reader.text() and reader.agrees())
    at = reader.text().index("bold plain")
    attributes, begin, end = Atspi.Text.get_attribute_run(terminal, at + 1, False)
    expect("where bold text is", (at, at + 4), (begin, end))
    if attributes.get("weight") not in ("bold", "700"):
        fail(f"bold text is not bold: {attributes}")
    red, green, blue = (int(part) for part in attributes["fg-color"].split(","))
    if red <= max(green, blue):
        fail(f"bold text is not red: {attributes}")
    plain, _, _ = Atspi.Text.get_attribute_run(terminal, at + 6, False)
    expect("the weight of plain text", None, plain.get("weight"))

    # The selection.
    Atspi.Text.add_selection(terminal, at, at + 4)
    await_that("a selection", lambda: Atspi.Text.get_n_selections(terminal) == 1)
    chosen = Atspi.Text.get_selection(terminal, 0)
    expect("the selection", (at, at + 4), (chosen.start_offset, chosen.end_offset))
    await_that("the selection to be told", lambda: reader.selections > 0)
    line = Atspi.Text.get_text_at_offset(terminal, at, Atspi.TextBoundaryType.LINE_START)
    expect("its line", "bold plain\n", line.content)

    # A flood: what is told keeps to its limit, and in the end nothing is missing.
    reader.inserted.clear()
    begun = time.monotonic()
    type_line("yes | cat -n")
    await_that("the flood", lambda: "999\ty" in reader.text() or "999  " in reader.text())
    pump(3)
    count, seconds = len(reader.inserted), time.monotonic() - begun
    if not 1 < count <= MOST_INSERTIONS * seconds + 1:
        fail(f"{count} insertions in {seconds:.1f} s")
    xdotool("key", "ctrl+c")
    await_that("the end of the flood", lambda: reader.text().rstrip("\n").endswith(PROMPT) and reader.agrees())
    print(f"{display}: {count} insertions told in {seconds:.1f} s of a flood")


def main():
    zolt, display = sys.argv[1:]
    with subprocess.Popen([zolt, display]) as started:
        try:
            check(zolt, display, started)
        finally:
            started.kill()


main()
