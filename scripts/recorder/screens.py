"""Programs that fill the screen: htop, tmux, mc, and boxes with questions."""
from .recording import DOWN, ENTER, PAGE_DOWN, RIGHT, TAB, UP, control, function_key, recording
from .shells import BASHRC, COLOURED_FILES, put_files, start_bash

HTOPRC = """fields=0 48 17 18 38 39 2 46 47 49 1
hide_kernel_threads=1
hide_userland_threads=1
highlight_base_name=1
color_scheme=0
delay=15
left_meters=CPU Memory Swap
left_meter_modes=1 1 1
right_meters=Tasks LoadAverage Uptime
right_meter_modes=2 2 2
"""
TMUX_CONF = """set -g status-left '[demo] '
set -g status-right ' a fixed text '
set -g status-interval 0
set -g default-command 'bash --noprofile --rcfile /home/user/.bashrc'
set -g default-terminal tmux-256color
set -g automatic-rename off
set -g mouse on
set -g escape-time 10
setw -g mode-keys vi
"""
MC_INI = """[Midnight-Commander]
confirm_exit=true
[Layout]
message_visible=false
free_space=false
"""


@recording("htop", "htop", "sleep", "sh", rows=30, cols=100)
def htop(stage):
    """Htop's meters and its list of a user's processes: the bar that is moved and scrolls the list, the tree, several
    redraws with nothing typed, and the menu of columns to sort by."""
    stage.write(".config/htop/htoprc", HTOPRC)
    for number in range(1, 37):
        stage.beside("sleep", str(1000 * number))
    stage.beside("sh", "-c", "sh -c 'while :; do :; done' & wait")
    stage.start("htop", "-u", "user", quiet=1.0)
    stage.keys(DOWN * 4, PAGE_DOWN, function_key(5), DOWN, "", "", function_key(5), quiet=1.0)
    stage.keys(function_key(3), "2000", ENTER, function_key(6), DOWN * 2)


def start_tmux(stage):
    put_files(stage)
    stage.write(".bashrc", BASHRC)
    stage.write(".tmux.conf", TMUX_CONF)
    stage.start("tmux", "new-session", "-s", "demo", "-n", "work", quiet=1.0)


@recording("tmux-panes", "tmux", "bash", "seq", rows=30, cols=100)
def tmux_panes(stage):
    """Tmux with a status line: panes side by side and one above the other, output that scrolls in one pane by a
    scrolling region, a full-screen split undone by the zoom, and a second window in the list."""
    start_tmux(stage)
    prefix = control("B")
    stage.keys("ls --color" + ENTER, prefix + "%", "seq 1 60" + ENTER)
    stage.keys(prefix + '"', "ls -l --time-style=long-iso" + ENTER)
    stage.keys(prefix + "\x1b[D", "seq 100 140" + ENTER, prefix + "z", prefix + "z")
    stage.keys(prefix + "c", "echo second" + ENTER, prefix + "p")
    stage.keys("printf '\\033[1;35mpurple\\033[0m \\033[7mreversed\\033[0m\\n'" + ENTER)


@recording("tmux-copy-mode", "tmux", "bash", "seq")
def tmux_copy_mode(stage):
    """Tmux's copy mode: the history of a pane scrolled back and forth with the position in the corner, a search with
    its matches marked, a selection, and the prompt for a command in the status line."""
    start_tmux(stage)
    prefix = control("B")
    stage.keys("seq -f 'line %g of the history' 200" + ENTER, prefix + "%", prefix + "o", prefix + "[", control("B"))
    stage.keys(control("U"), "kkkkkkkk" * 3, control("E"), control("Y"), "?line 12" + ENTER, "n", "0", " ", "jjll")
    stage.keys(prefix + ":", "display")


@recording("mc-panels", "mc")
def mc_panels(stage):
    """Mc's two panels of a folder with fixed dates, in line drawing and colours: moving and marking, a menu pulled
    down, the viewer of a file, and the dialog for copying with its shadow."""
    for number in range(1, 31):
        stage.write(f"demo/left/chapter-{number:02}.txt", f"Chapter {number}\n" * number)
    for path, text in COLOURED_FILES.items():
        stage.write(path.replace("demo/", "demo/right/"), text, executable=path.endswith(".sh"))
    stage.write(".config/mc/ini", MC_INI)
    stage.start("mc", "--nosubshell", "left", "right", quiet=1.0)
    stage.keys(DOWN * 5, "\x1b[2~" * 2, PAGE_DOWN, UP, function_key(9), RIGHT, DOWN * 2, "\x1b\x1b", quiet=0.7)
    stage.keys(function_key(3), DOWN, function_key(10), TAB, DOWN, TAB, function_key(5), quiet=0.7)


@recording("mc-quit", "bash", "mc")
def mc_quit(stage):
    """Mc started from a shell and quit, with its question answered: the shell's screen is there again and the mouse
    is the shell's."""
    put_files(stage)
    stage.write("demo/papers/first.txt", "First\n")
    stage.write(".config/mc/ini", MC_INI)
    start_bash(stage)
    stage.keys("ls --color" + ENTER, "mc --nosubshell src papers" + ENTER, DOWN * 3, TAB, function_key(10), quiet=0.8)
    stage.keys(ENTER, "echo back")


@recording("whiptail-menu", "whiptail")
def whiptail_menu(stage):
    """A menu of whiptail's on its coloured ground: a box with a shadow and line drawing, the bar moved through the
    entries of a list that scrolls, and the buttons."""
    entries = [word for number in range(1, 15) for word in (f"entry {number}", f"What entry {number} stands for")]
    stage.start("whiptail", "--title", "Choose", "--menu", "Which of these is it to be?", "18", "60", "8", *entries)
    stage.keys(DOWN * 10, UP * 2, TAB, TAB, DOWN)


@recording("dialog-boxes", "dialog")
def dialog_boxes(stage):
    """Dialog's check list, with entries turned on and off, then a form above it on the same screen, typed into: boxes
    that overlap, in colours and line drawing."""
    entries = [word for number in range(1, 9) for word in (f"part{number}", f"Part number {number}", "off")]
    stage.start(
        "dialog", "--keep-window", "--begin", "2", "4", "--title", "Parts", "--checklist", "Which parts?",
        "14", "40", "8", *entries, "--and-widget",
        "--begin", "8", "30", "--title", "Form", "--form", "Fill in", "12", "44", "3",
        "Name:", "1", "1", "", "1", "10", "20", "30", "Place:", "2", "1", "here", "2", "10", "20", "30")
    stage.keys(DOWN, " ", DOWN * 2, " ", ENTER, "A U Thor", DOWN, " and there", TAB)
