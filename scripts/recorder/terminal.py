"""A program on a pseudo-terminal: typed keys go in, every byte it writes is kept, and what it asks of its terminal is
answered, so that no program waits for a reply that never comes."""
import fcntl
import os
import pty
import re
import select
import struct
import termios
import time

CSI, OSC = rb"\x1b\[", rb"\x1b\]"

# What is asked, and what a plain terminal with 256 colours says. XTVERSION and the keyboard protocol's `CSI ? u` have
# no answer, as from a terminal that knows neither.
ANSWERS = [
    (re.compile(CSI + rb"0?c"), lambda found, self: b"\x1b[?62;22c"),
    (re.compile(CSI + rb">0?c"), lambda found, self: b"\x1b[>1;10;0c"),
    (re.compile(CSI + rb"5n"), lambda found, self: b"\x1b[0n"),
    (re.compile(CSI + rb"6n"), lambda found, self: b"\x1b[%d;%dR" % self.next_position()),
    (re.compile(CSI + rb"\?(\d+)\$p"), lambda found, self: b"\x1b[?" + found[1] + b";0$y"),
    (re.compile(OSC + rb"10;\?(\x07|\x1b\\)"), lambda found, self: b"\x1b]10;rgb:ffff/ffff/ffff" + found[1]),
    (re.compile(OSC + rb"11;\?(\x07|\x1b\\)"), lambda found, self: b"\x1b]11;rgb:0000/0000/0000" + found[1]),
]
LONGEST_QUESTION = 32
KEY = re.compile(r"\x1b[\[O][^A-Za-z~]*[A-Za-z~]|.", re.S)
CURSOR_KEY = re.compile(r"\x1b\[([ABCDFH])")
CURSOR_KEY_MODE = re.compile(CSI + rb"\?(?:\d+;)*1(?:;\d+)*([hl])")  # DECCKM, alone or among others
BYTES_AT_ONCE = 65536


class Terminal:
    """The terminal's side. `positions` are the answers to DSR 6 in turn, the last of them for ever."""

    def __init__(self, command, rows, cols, environment, folder, identity, positions):
        self.output = bytearray()
        self._answered = 0
        self._positions = list(positions)
        self._child, self._side = pty.fork()
        if self._child == 0:
            self._become(command, rows, cols, environment, folder, identity)

    @staticmethod
    def _become(command, rows, cols, environment, folder, identity):
        try:
            fcntl.ioctl(0, termios.TIOCSWINSZ, struct.pack("HHHH", rows, cols, 0, 0))
            os.setgroups([])
            os.setgid(identity)
            os.setuid(identity)
            os.chdir(folder)
            os.execvpe(command[0], command, environment)
        finally:
            os._exit(127)

    def next_position(self):
        return self._positions.pop(0) if len(self._positions) > 1 else self._positions[0]

    def type(self, text, pause=0.02):
        """Sends characters one after the other, as fingers do; a key's escape sequence goes whole."""
        for key in KEY.findall(text):
            if self._side is None:
                raise EOFError(f"the program had ended before {key!r} was typed")
            os.write(self._side, self._encoded(key))
            self._read_for(pause)

    def _encoded(self, key):
        """A cursor key is sent in the form that the program has asked for last."""
        cursor_key = CURSOR_KEY.fullmatch(key)
        modes = CURSOR_KEY_MODE.findall(self.output) if cursor_key else []
        return f"\x1bO{cursor_key[1]}".encode() if modes[-1:] == [b"h"] else key.encode()

    def wait(self, quiet=0.4, at_most=10.0):
        """Reads until the program has written nothing for `quiet` seconds, or has ended."""
        end = time.monotonic() + at_most
        while time.monotonic() < end and self._read_for(quiet, until_first=True):
            pass

    def wait_for_end(self, at_most=30.0):
        """Reads until the program has ended, which it must."""
        end = time.monotonic() + at_most
        while self._side is not None:
            if time.monotonic() > end:
                raise TimeoutError("the program did not end")
            self._read_for(0.2)
        _, status = os.waitpid(self._child, 0)
        if status != 0:
            raise ChildProcessError(f"the program ended with status {os.waitstatus_to_exitcode(status)}")

    def _read_for(self, seconds, until_first=False):
        """Whether anything came within so many seconds; with `until_first` it returns as soon as something did."""
        end = time.monotonic() + seconds
        anything = False
        while self._side is not None:
            ready, _, _ = select.select([self._side], [], [], max(0.0, end - time.monotonic()))
            if not ready:
                break
            try:
                got = os.read(self._side, BYTES_AT_ONCE)
            except OSError:  # the other side is closed: the program has ended
                got = b""
            if not got:
                os.close(self._side)
                self._side = None
                break
            anything = True
            self.output += got
            self._answer()
            if until_first:
                break
        return anything

    def _answer(self):
        # A question may come in two parts: the search goes on from behind the last one that was answered.
        begin = max(self._answered, len(self.output) - BYTES_AT_ONCE - LONGEST_QUESTION)
        found = sorted(
            (match.end(), match, answer)
            for question, answer in ANSWERS
            for match in question.finditer(self.output, begin)
        )
        for end, match, answer in found:
            os.write(self._side, answer(match, self))
            self._answered = end
