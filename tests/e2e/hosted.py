"""A program on a pseudo-terminal of the full emulation, driven without a window: `zolt-inspect host ROWS COLS --
PROGRAM...` runs it, takes the keys that are typed from its standard input and prints, when the program has ended, one
JSON object whose "screen" is a list of the rows' texts."""
import json
import os
import signal
import subprocess
import time

LONGEST_SECONDS = 30


class Hosted:
    """`patience` stretches every pause: 1 is enough on a machine with little else to do."""

    def __init__(self, inspect, rows, cols, program, environment, patience):
        self._patience = patience
        self._host = subprocess.Popen(
            [inspect, "host", str(rows), str(cols), "--", *program], env=environment, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, bufsize=0)
        self._pause(1.0)

    def type(self, *keys):
        """Types each of the keys, as bytes that a keyboard's encoder would make of them, with a pause after each."""
        for key in keys:
            self._host.stdin.write(key.encode())
            self._pause(0.4)

    def screen_when_killed(self, *servers):
        """Ends the program by a signal that it cannot catch, so that its last screen stays, and returns that screen's
        rows without the blanks at their ends. `servers`: processes that draw for the program and would tidy up after
        it; they are killed while it is stopped, so that neither learns of the other's end."""
        programs = self._programs()
        for process in programs:
            os.kill(process, signal.SIGSTOP)
        for process in (*servers, *programs):
            os.kill(process, signal.SIGKILL)
        output, _ = self._host.communicate(timeout=LONGEST_SECONDS)
        return [row.rstrip() for row in json.loads(output)["screen"]]

    def stop(self):
        """Leaves nothing running, whatever went wrong before."""
        if self._host.poll() is None:
            for process in self._programs():
                os.kill(process, signal.SIGKILL)
            self._host.kill()
            self._host.wait()
        self._host.stdin.close()
        self._host.stdout.close()

    def _programs(self):
        found = subprocess.run(["pgrep", "-P", str(self._host.pid)], capture_output=True, text=True, check=False)
        return [int(process) for process in found.stdout.split()]

    def _pause(self, seconds):
        time.sleep(seconds * self._patience)
