"""One recording: what it covers, which programs it needs, and the steps that make it."""
import os
import subprocess
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

from . import sandbox
from .terminal import Terminal

PROGRAMS_OF_OURS = {path.name: path.read_bytes() for path in (Path(__file__).parent / "programs").iterdir()}
FIXED_DATE = 981173106  # 3 February 2001, 04:05:06 UTC

UP, DOWN, RIGHT, LEFT = "\x1b[A", "\x1b[B", "\x1b[C", "\x1b[D"
PAGE_UP, PAGE_DOWN, END_KEY = "\x1b[5~", "\x1b[6~", "\x1b[F"
TAB, BACK_TAB, ENTER, ESCAPE, BACKSPACE = "\t", "\x1b[Z", "\r", "\x1b", "\x7f"


def control(letter):
    return chr(ord(letter.upper()) & 31)


def function_key(number):
    """F1 to F12 as the terminal description of xterm-256color has them."""
    return f"\x1bO{'PQRS'[number - 1]}" if number < 5 else f"\x1b[{[15, 17, 18, 19, 20, 21, 23, 24][number - 5]}~"


@dataclass
class Recording:
    name: str
    why: str  # a sentence or two, from the docstring of the steps
    rows: int
    cols: int
    programs: tuple  # that must be installed
    steps: Callable


RECORDINGS = {}


def recording(name, *programs, rows=24, cols=80):
    """Registers the function below it as the steps of a recording; its docstring says what the recording covers."""

    def register(steps):
        why = " ".join(steps.__doc__.split())
        RECORDINGS[name] = Recording(name, why, rows, cols, programs, steps)
        return steps

    return register


class Stage:
    """What the steps of a recording use: files of the user's, then a program at the terminal and its keys."""

    def __init__(self, rows, cols):
        self._rows, self._cols = rows, cols
        self._environment = dict(sandbox.ENVIRONMENT)
        self._terminal = None

    def write(self, path, contents, executable=False):
        """A file in the home folder, of the fixed date; "demo/" is the folder that programs start in."""
        target = Path(sandbox.HOME, path)
        for folder in reversed([folder for folder in target.parents if folder.is_relative_to(sandbox.HOME)]):
            folder.mkdir(exist_ok=True)
        target.write_bytes(contents if isinstance(contents, bytes) else contents.encode())
        target.chmod(0o755 if executable else 0o644)
        self.settle(path)

    def settle(self, path):
        """Gives a file and the folders above it to the user, with the fixed date."""
        target = Path(sandbox.HOME, path)
        while target != Path("/home"):
            os.chown(target, sandbox.IDENTITY, sandbox.IDENTITY)
            os.utime(target, (FIXED_DATE, FIXED_DATE))
            target = target.parent

    def bring(self, program):
        """One of our own programs, from scripts/recorder/programs."""
        self.write(f"demo/{program}", PROGRAMS_OF_OURS[program], executable=True)

    def set(self, **variables):
        self._environment.update(variables)

    def prepare(self, *command, **variables):
        """Runs a command as the user, unseen."""
        subprocess.run(
            command, check=True, cwd=sandbox.FOLDER, env=self._environment | variables, stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, user=sandbox.IDENTITY, group=sandbox.IDENTITY, extra_groups=[])

    def beside(self, *command):
        """Starts a command of the user's that runs on, unseen."""
        subprocess.Popen(
            command, cwd=sandbox.FOLDER, env=self._environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, user=sandbox.IDENTITY, group=sandbox.IDENTITY, extra_groups=[])

    def start(self, *command, positions=((1, 1),), quiet=0.6):
        """Starts the program that is recorded. `positions`: what the terminal says of its cursor when asked."""
        self._terminal = Terminal(
            command, self._rows, self._cols, self._environment, sandbox.FOLDER, sandbox.IDENTITY, positions)
        self._terminal.wait(quiet)

    def keys(self, *keys, quiet=0.4):
        """Types each, and waits after each until the program has drawn what it draws."""
        for key in keys:
            self._terminal.type(key)
            self._terminal.wait(quiet, at_most=4.0)

    def end(self, *keys):
        """Types the keys and records up to the program's end."""
        for key in keys:
            self._terminal.type(key)
        self._terminal.wait_for_end()

    def recorded(self):
        return bytes(self._terminal.output)
