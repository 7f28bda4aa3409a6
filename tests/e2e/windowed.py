"""The full emulation in a real window on a display of its own, driven by an X client: keys, the mouse, the clipboard.
What the window shows is what selecting and copying everything yields; what programs are told, they write into files."""
import contextlib
import os
import re
import shutil
import signal
import subprocess
import tempfile
import time
from pathlib import Path

SKIPPED = 77
PATIENCE_SECONDS = 60
# The screen of the virtual display, in pixels.
SCREEN = (1280, 1024)
# A program for the window.
INSIDE = Path(__file__).with_name("inside.py")

# What the session says about its program on standard output.
EXPECTED = re.compile(r"^Terminal exited with code: \d+\n", re.MULTILINE)


class Failure(Exception):
    """A behaviour that is not as expected."""


def succeeds(condition, what, seconds=PATIENCE_SECONDS):
    """Waits until `condition()` is true and returns what it returned; `what` says what did not happen otherwise."""
    end = time.monotonic() + seconds
    while True:
        if found := condition():
            return found
        if time.monotonic() > end:
            raise Failure(f"timed out: {what() if callable(what) else what}")
        time.sleep(0.05)


def expect(what, expected, found):
    if expected != found:
        raise Failure(f"{what}: expected {expected!r}, found {found!r}")


def expect_line(lines, expected):
    if expected not in lines:
        raise Failure(f"expected a line {expected!r} in {lines!r}")


def exists(pid):
    """Whether the process runs; one that nobody has waited for yet does not."""
    try:
        return Path(f"/proc/{pid}/stat").read_text(encoding="utf-8").rpartition(")")[2].split()[0] != "Z"
    except (FileNotFoundError, ProcessLookupError):
        return False


def children_of(pid):
    found = subprocess.run(["pgrep", "-P", str(pid)], capture_output=True, text=True, check=False)
    return [int(child) for child in found.stdout.split()]


@contextlib.contextmanager
def display():
    """An X server of its own: its process. It does not start over when its last client leaves."""
    reader, writer = os.pipe()
    size = "x".join(map(str, SCREEN))
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{size}x24", "-nolisten", "tcp", "-noreset"],
        pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writer)
    with os.fdopen(reader) as chosen:
        number = chosen.readline().strip()
    if not number:
        raise Failure("the virtual display did not start")
    before = os.environ.get("DISPLAY", "")
    os.environ["DISPLAY"] = f":{number}"
    try:
        yield server
    finally:
        os.environ["DISPLAY"] = before
        server.kill()
        server.wait()


def fonts():
    """The fonts of the tests, if ctest has set them."""
    folder = os.environ.get("ZOLT_TEST_FONT_FOLDER")
    family = os.environ.get("ZOLT_TEST_FONT", "DejaVu Sans Mono")
    return {"FONTCONFIG_FILE": f"{folder}/{family}.conf"} if folder else {}


class Window:
    """One instance of Zolt with a home of its own, and its first window. `program` runs in it instead of the shell;
    `settings` are stored before; `environment` is added to one that holds nothing of this machine; `files` are written
    into the home folder, and its folders `path` come before the others in which programs are found."""

    def __init__(self, zolt, *program, settings=None, environment=None, files=None, path=()):
        self._folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.home = Path(self._folder.name)
        self.settings_file = self.home / "config/zolt/zolt.ini"
        self.settings_file.parent.mkdir(parents=True)
        (self.home / "runtime").mkdir(mode=0o700)
        lines = [f"{key}={value}" for key, value in {"cursorBlink": "false", **(settings or {})}.items()]
        self.settings_file.write_text("\n".join(["[General]", *lines, ""]), encoding="utf-8")
        for name, text in (files or {}).items():
            (self.home / name).write_text(text, encoding="utf-8")
        self.environment = {
            "PATH": ":".join([*(str(self.home / each) for each in path), os.environ["PATH"]]), "HOME": str(self.home), "TMPDIR": str(self.home), "LC_ALL": "C.UTF-8",
            "XDG_CONFIG_HOME": str(self.home / "config"), "XDG_RUNTIME_DIR": str(self.home / "runtime"),
            "SHELL": "/bin/sh", "ENV": str(self.home / "shrc"), "LESSHISTFILE": "-", "DISPLAY": os.environ["DISPLAY"],
            "QT_QPA_PLATFORM": "xcb", "QT_LOGGING_TO_CONSOLE": "1", **fonts(), **(environment or {})}
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        (self.home / "shrc").write_text("PS1='ready> '\n", encoding="utf-8")
        self._output = open(self.home / "output", "w+b")
        self._zolt = os.path.abspath(zolt)
        self._said = []
        try:
            self.start(*(["-e", *program] if program else []))
        except BaseException:
            self.stop()
            raise

    def start(self, *arguments):
        """Starts the program, which does not run, in the same home, and waits for its first window."""
        self.process = subprocess.Popen([self._zolt, "--full-emulation", *arguments], env=self.environment, cwd=self.home,
                                        stdin=subprocess.DEVNULL, stdout=self._output, stderr=self._output)
        self.pid = self.process.pid
        self.id = succeeds(self._first_window, lambda: f"the window; printed: {self.printed()!r}")
        self.focus()

    def quit(self):
        """As the user does where nothing but shells runs."""
        self.key("ctrl+shift+q")
        succeeds(lambda: self.process.poll() is not None, "the program to have ended")
        expect("the exit status", 0, self.process.returncode)

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        printed = EXPECTED.sub("", self.printed())
        for line in self._said:
            printed = printed.replace(line, "")
        self.stop()
        if printed.strip():
            (print if kind else self._complain)(f"printed by the program: {printed[:4000]}")

    @staticmethod
    def _complain(text):
        raise Failure(text)

    def stop(self):
        """Leaves nothing running, whatever went wrong before."""
        shells = children_of(self.pid)
        if self.process.poll() is None:
            self.process.terminate()
            try:
                self.process.wait(timeout=PATIENCE_SECONDS)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        for shell in shells:
            with contextlib.suppress(ProcessLookupError):
                os.kill(shell, signal.SIGKILL)
        self._output.close()
        self._folder.cleanup()

    def says(self, line):
        """Waits until the program has printed this line, which is as it should be."""
        succeeds(lambda: line in self.printed(), lambda: f"{line!r} to be printed, not {self.printed()!r}")
        self._said.append(line + "\n")

    def printed(self):
        return (self.home / "output").read_text(encoding="utf-8", errors="replace")

    # Windows.

    def windows(self, title="."):
        """The instance's visible windows with a title that the expression matches, in the order of their making."""
        found = subprocess.run(["xdotool", "search", "--all", "--onlyvisible", "--pid", str(self.pid), "--name", title],
                               capture_output=True, text=True, check=False)
        return sorted(int(each) for each in found.stdout.split())

    def _first_window(self):
        if self.process.poll() is not None:
            raise Failure(f"it ended with {self.process.returncode}: {self.printed()!r}")
        found = self.windows()
        return found[0] if found else None

    def focus(self, window=None):
        """Without a window manager nobody gives a window the keyboard."""
        self.xdotool("windowfocus", "--sync", window or self.id)

    def title(self):
        return self.xdotool("getwindowname", self.id).rstrip("\n")

    def size(self):
        geometry = self.xdotool("getwindowgeometry", self.id)
        return tuple(map(int, re.search(r"Geometry: (\d+)x(\d+)", geometry).groups()))

    def resize(self, width, height):
        self.xdotool("windowsize", self.id, width, height)
        succeeds(lambda: self.size() == (width, height), f"the window to be {width} by {height}")

    def try_size(self, width, height):
        """As `resize`, for a size that may be below the window's least one."""
        self.xdotool("windowsize", self.id, width, height)

    def picture(self, window=None, rows=None):
        """The window's pixels; `rows` limits them to the last so many rows of pixels."""
        pixels = subprocess.run(["xwd", "-silent", "-id", str(window or self.id)], capture_output=True, check=True).stdout
        return pixels[-rows * self.size()[0] * 4:] if rows else pixels

    def picture_at_rest(self, window=None, rows=None):
        """The pixels once they do not change for a while. That nothing changes can only be seen by waiting."""
        pictures = []

        def rests():
            pictures.append(self.picture(window, rows))
            time.sleep(0.2)
            return len(pictures) > 3 and len(set(pictures[-4:])) == 1

        succeeds(rests, "the window to be at rest")
        return pictures[-1]

    # What the user does.

    def type(self, text):
        self.xdotool("type", "--delay", 15, "--", text)

    def key(self, *keys):
        self.xdotool("key", "--delay", 15, *keys)

    def enter(self, line):
        self.type(line)
        self.key("Return")

    def paste(self, text):
        """Pastes, and waits until something has come of it: until then the clipboard must stay as it is."""
        self.put_on_clipboard(text)
        before = self.picture_at_rest()
        self.key("ctrl+shift+v")
        succeeds(lambda: self.picture() != before, "what is pasted to be shown")

    def answer(self, title, *keys):
        """Waits for the question in a window of this title, and closes it with these keys."""
        question = succeeds(lambda: self.windows(f"^{title}$"), f"the question {title}")[0]
        self.focus(question)
        self.picture_at_rest(question)  # it takes keys once it is shown
        self.key(*keys)
        succeeds(lambda: not self.windows(f"^{title}$"), f"the question {title} to be closed")
        self.focus()

    def move(self, x, y):
        self.xdotool("mousemove", "--window", self.id, round(x), round(y))

    def click(self, x, y, button=1, modifier=None, count=1):
        self.move(x, y)
        if modifier:
            self.xdotool("keydown", modifier)
        self.xdotool("click", "--repeat", count, "--delay", 60, button)
        if modifier:
            self.xdotool("keyup", modifier)

    def drag(self, start, end, steps=2):
        self.move(*start)
        self.xdotool("mousedown", 1)
        for step in range(1, steps + 1):
            self.move(start[0] + (end[0] - start[0]) * step / steps, start[1] + (end[1] - start[1]) * step / steps)
        self.xdotool("mouseup", 1)

    def xdotool(self, *arguments):
        done = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, capture_output=True, text=True,
                              check=False)
        return done.stdout

    # What it shows and holds.

    @classmethod
    def put_on_clipboard(cls, text, selection="clipboard"):
        """The program that owns the text goes on in the background, and may not have told the X server yet."""
        subprocess.run(["xclip", "-in", "-selection", selection], input=text.encode(), check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        succeeds(lambda: cls.clipboard(selection) == text, "the clipboard to have the text")

    @staticmethod
    def clipboard(selection="clipboard"):
        with contextlib.suppress(subprocess.TimeoutExpired):
            done = subprocess.run(["xclip", "-out", "-selection", selection], capture_output=True, timeout=10,
                                  check=False)
            return done.stdout.decode(errors="replace")
        return ""

    def lines(self):
        """All lines that the window shows or has in its history."""
        self.put_on_clipboard("nothing has been copied")
        self.key("ctrl+shift+a", "ctrl+shift+c")
        found = []

        def copied():
            found[:] = [self.clipboard()]
            return found[0] != "nothing has been copied"

        with contextlib.suppress(Failure):
            succeeds(copied, "", seconds=3)
        return [line.rstrip() for line in found[0].split("\n")]

    def shows(self, condition, what):
        """Waits until `condition` holds for the lines, and returns them."""
        seen = []

        def holds():
            seen[:] = self.lines()
            return condition(seen)

        succeeds(holds, lambda: f"{what}; it shows {seen!r}")
        return seen

    def shows_line(self, line):
        return self.shows(lambda lines: line in lines, f"the line {line!r}")

    # Places.

    def learn_places(self):
        """Learns where the cells are; the window must be at the prompt of its shell. Holds until the font changes or
        the mouse is elsewhere than in the first window."""
        self.enter(f"python3 {INSIDE} point pointer")
        self.wrote("pointer-waits")
        x, y = (side / 2 for side in self.size())

        def is_told():
            # The program has asked for the mouse, but a multiplexer may not have passed that on yet.
            self.click(x, y)
            with contextlib.suppress(Failure):
                return succeeds(lambda: self.text_of("pointer"), "", seconds=5)

        found = succeeds(is_told, lambda: f"the program to be told of a click; printed: {self.printed()!r}").split()
        self._cell = tuple(map(float, found[2:]))
        self._origin = (x - float(found[0]), y - float(found[1]))

    def place(self, row, column):
        """The middle of a cell of the screen, from (0, 0), in pixels of the window."""
        return tuple(origin + (index + 0.5) * side
                     for origin, index, side in zip(self._origin, (column, row), self._cell))

    def place_of(self, text, lines):
        """The middle of the first character of the text in the lines, which are the screen's."""
        row = next(row for row, line in enumerate(lines) if text in line)
        return self.place(row, lines[row].index(text))

    # Files that programs write.

    def text_of(self, name):
        try:
            return (self.home / name).read_text(encoding="utf-8", errors="replace")
        except FileNotFoundError:
            return None

    def wrote(self, name, text=None):
        """Waits until the file exists, and holds exactly the text; returns what it holds."""
        if text is None:
            succeeds(lambda: self.text_of(name), f"the file {name}; printed: {self.printed()!r}")
        else:
            succeeds(lambda: self.text_of(name) == text, lambda: f"{name}: {self.text_of(name)!r} to be {text!r}")
        return self.text_of(name)


def run(checks, zolt, names, needs=()):
    """Runs those of the checks that are named, or all; each is a function of Zolt's path. The status for ctest."""
    for tool in ("Xvfb", "xdotool", "xclip", "xwd", *needs):
        if not shutil.which(tool):
            print(f"skipped: {tool} is not installed")
            return SKIPPED
    failed = False
    with display():
        for check in checks:
            if names and check.__name__ not in names:
                continue
            try:
                check(zolt)
                print(f"{check.__name__}: as expected")
            except Failure as problem:
                failed = True
                print(f"{check.__name__}: {problem}")
    return 1 if failed else 0
