"""Programs of our own that draw with the terminal's capabilities: tput, and Python's curses."""
from .recording import recording


def tput(stage, figure):
    stage.bring("tput-figures")
    stage.start("bash", "tput-figures", figure)


@recording("tput-regions", "bash", "tput")
def tput_regions(stage):
    """A scrolling region in the middle of the screen, scrolled both ways by line feeds, reverse line feeds and by
    several lines at once; line feeds in the last row below the region, where nothing scrolls."""
    tput(stage, "regions")


@recording("tput-lines", "bash", "tput")
def tput_lines(stage):
    """Lines inserted and deleted, on the whole screen and within a scrolling region, and the screen erased below a
    place."""
    tput(stage, "lines")


@recording("tput-characters", "bash", "tput")
def tput_characters(stage):
    """Characters inserted, deleted, erased and repeated; the insert mode, also over the right margin; a row erased to
    its end and to its beginning; tabs cleared, set and used in both directions."""
    tput(stage, "characters")


@recording("tput-attributes", "bash", "tput")
def tput_attributes(stage):
    """Attributes, 16 colours as ink and as ground, a row erased in a colour, line drawing by its character set, the
    cursor at the right margin before and after the wrap, saved, restored and hidden."""
    tput(stage, "attributes")


def curses(stage, figure):
    stage.bring("curses-figures")
    stage.start("/usr/bin/python3", "curses-figures", figure)


@recording("curses-boxes", "python3", rows=30, cols=100)
def curses_boxes(stage):
    """Windows of a curses program that overlap, each on its own ground, a border round the screen and a grid, all in
    line drawing."""
    curses(stage, "boxes")


@recording("curses-colours", "python3", rows=24, cols=90)
def curses_colours(stage):
    """The table of 256 colours as grounds of a curses program."""
    curses(stage, "colours")


@recording("curses-attributes", "python3", rows=30, cols=100)
def curses_attributes(stage):
    """Every two attributes together, all symbols of the line drawing set, wide and combining characters, and the last
    cell of the screen written without scrolling it, by a curses program."""
    curses(stage, "attributes")


@recording("curses-scrolling", "python3", rows=30, cols=100)
def curses_scrolling(stage):
    """A curses window that scrolls both ways, as curses optimises it, beside a pad that is moved behind a hole."""
    curses(stage, "scrolling")


@recording("curses-moving", "python3", rows=30, cols=100)
def curses_moving(stage):
    """A window that curses moves over a dotted ground: what it covered is drawn again, and nothing of it stays."""
    curses(stage, "moving")
