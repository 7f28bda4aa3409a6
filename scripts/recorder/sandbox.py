"""The place that recorded programs see: a host "demo", a user "user" with a fresh home folder and no other process,
so that nothing of the machine is in a recording. Linux namespaces make it; whoever makes one is root there."""
import ctypes
import os
import socket

HOME = "/home/user"
FOLDER = HOME + "/demo"
IDENTITY = 1000  # of the user and of its group
ENVIRONMENT = {
    "HOME": HOME,
    "USER": "user",
    "LOGNAME": "user",
    "SHELL": "/bin/bash",
    "PATH": "/usr/local/bin:/usr/bin:/bin:/usr/games",
    "TERM": "xterm-256color",
    "COLORTERM": "truecolor",
    "LANG": "C.UTF-8",
    "TZ": "UTC",
    "LESSHISTFILE": "-",
}
FILES = {
    "/etc/passwd": "root:x:0:0::/root:/bin/sh\nuser:x:1000:1000::/home/user:/bin/bash\n",
    "/etc/group": "root:x:0:\nuser:x:1000:\n",
    "/proc/uptime": "86400.00 172000.00\n",
    "/proc/loadavg": "0.42 0.36 0.30 1/64 64\n",
    "/proc/meminfo": "MemTotal: 8000000 kB\nMemFree: 5000000 kB\nMemAvailable: 6500000 kB\nBuffers: 200000 kB\n"
    "Cached: 1300000 kB\nSwapTotal: 2000000 kB\nSwapFree: 1900000 kB\nSwapCached: 0 kB\nShmem: 10000 kB\n"
    "SReclaimable: 100000 kB\n",
}
MS_BIND = 4096

_libc = ctypes.CDLL(None, use_errno=True)


def command(arguments):
    """The command line that runs `arguments` in namespaces of their own, which end with it."""
    root = [] if os.geteuid() == 0 else ["sudo"]
    return [*root, "unshare", "--pid", "--fork", "--kill-child", "--uts", "--mount", "--mount-proc", *arguments]


def _mount(source, target, kind=None, flags=0, options=None):
    encoded = [text.encode() if text is not None else None for text in (source, target, kind, options)]
    if _libc.mount(encoded[0], encoded[1], encoded[2], ctypes.c_ulong(flags), encoded[3]) != 0:
        error = ctypes.get_errno()
        raise OSError(error, os.strerror(error), target)


def enter():
    """Called within the namespaces, once. Python's modules must be loaded before: their folders may be hidden."""
    socket.sethostname("demo")
    os.umask(0o022)
    _mount("none", "/home", "tmpfs", options="size=64m,mode=755")
    _mount("none", "/tmp", "tmpfs", options="size=64m,mode=1777")
    for path, text in FILES.items():
        stand_in = "/home/" + path.replace("/", "-")
        with open(stand_in, "w", encoding="utf-8") as file:
            file.write(text)
        _mount(stand_in, path, flags=MS_BIND)
    for folder in (HOME, FOLDER):
        os.mkdir(folder)
        os.chown(folder, IDENTITY, IDENTITY)
