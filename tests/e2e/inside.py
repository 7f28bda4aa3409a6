#!/usr/bin/env python3
"""Runs in a window and tells what the terminal tells it. The file OUT is complete as soon as it is there.
  ask OUT FINAL QUERY...: sends the queries, each with \\033 for an escape, and writes a line with what is answered to
    each, up to and including the text FINAL; repr() of it.
  point OUT: writes where in the text's area a button is released, in pixels, then the cell's size: "x y width height".
  size OUT: writes "rows columns" at the start and after each change, a line each.
"""
import fcntl
import os
import re
import signal
import struct
import sys
import termios
import tty


def write(name, text):
    with open(name + ".part", "w", encoding="utf-8") as part:
        part.write(text)
    os.rename(name + ".part", name)


def size():
    return struct.unpack("4H", fcntl.ioctl(0, termios.TIOCGWINSZ, bytes(8)))


def raw(function):
    """Calls it with a terminal that neither echoes nor interprets, and puts that back."""
    before = termios.tcgetattr(0)
    tty.setraw(0)
    try:
        return function()
    finally:
        termios.tcsetattr(0, termios.TCSADRAIN, before)


def answer(query, final):
    os.write(1, query)
    found = b""
    while not found.endswith(final):
        found += os.read(0, 4096)
    return found


def ask(out, final, *queries):
    def line(text):
        return text.encode("latin-1").decode("unicode_escape").encode("latin-1")

    answers = raw(lambda: [answer(line(query), line(final)) for query in queries])
    write(out, "".join(repr(each)[2:-1] + "\n" for each in answers))


def point(out):
    def release():
        os.write(1, b"\033[?1000h\033[?1006h\033[?1016h")
        write(out + "-waits", "\n")
        return answer(b"", b"m")

    found = raw(release)
    os.write(1, b"\033[?1016l\033[?1006l\033[?1000l")
    x, y = re.search(rb"<\d+;(\d+);(\d+)m$", found).groups()
    rows, columns, width, height = size()
    write(out, f"{int(x)} {int(y)} {width / columns} {height / rows}\n")


def sizes(out):
    seen = []

    def look(*_):
        now = size()[:2]
        if not seen or seen[-1] != now:
            seen.append(now)
            write(out, "".join(f"{rows} {columns}\n" for rows, columns in seen))

    signal.signal(signal.SIGWINCH, look)
    look()
    while True:
        signal.pause()


{"ask": ask, "point": point, "size": sizes}[sys.argv[1]](*sys.argv[2:])
