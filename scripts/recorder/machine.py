"""What must not be in a recording: names, paths and numbers of the machine that it was made on."""
import getpass
import os
import re
import socket
import subprocess
from pathlib import Path

# Any address but those of documents and of loopback.
ADDRESS = re.compile(rb"\b(?!127\.|0\.|192\.0\.2\.)\d{1,3}(?:\.\d{1,3}){3}\b")
CONTROL_SEQUENCE = re.compile(rb"\x1b\[[0-?]*[ -/]*[@-~]")
# Names that stand for nobody: the user and the host of the recordings, and the one that every machine has.
NEUTRAL = {"user", "demo", "root", "localhost"}


def _own_words():
    system = os.uname()
    words = {socket.gethostname(), socket.getfqdn(), getpass.getuser(), os.environ.get("SUDO_USER", "")}
    words |= {system.release, system.version, str(Path(__file__).resolve().parents[2]), str(Path.home())}
    try:
        found = subprocess.run(["hostname", "-I"], capture_output=True, text=True, check=False)
        words |= set(found.stdout.split())
    except FileNotFoundError:
        pass
    return sorted(word for word in words if word and word not in NEUTRAL)


def signs_of_this_machine(output):
    """Each own word that stands in the output as a word, and each network address."""
    text = CONTROL_SEQUENCE.sub(b" ", output)  # whose last letter would be part of the word behind it
    words = [word for word in _own_words() if re.search(rb"(?<!\w)" + re.escape(word.encode()) + rb"(?!\w)", text)]
    return words + [address.decode() for address in ADDRESS.findall(text)]
