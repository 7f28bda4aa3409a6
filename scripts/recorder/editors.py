"""Editors: vim and nano."""
from .recording import BACKSPACE, DOWN, ENTER, ESCAPE, PAGE_DOWN, RIGHT, control, recording
from .shells import start_bash

C_FILE = r'''/* Heat that spreads along a bar: explicit differences, one step after the other. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#define CELLS 64
#define STEPS 1000

struct bar {
	double temperature[CELLS];
	double conductivity;
};

/* TODO: let the ends be insulated. */
static void step(struct bar *bar, double seconds)
{
	double next[CELLS];
	for (int i = 1; i < CELLS - 1; i++) {
		double flow = bar->temperature[i - 1] - 2.0 * bar->temperature[i] + bar->temperature[i + 1];
		next[i] = bar->temperature[i] + seconds * bar->conductivity * flow;
	}
	for (int i = 1; i < CELLS - 1; i++)
		bar->temperature[i] = next[i];
}

static double mean(const struct bar *bar)
{
	double sum = 0.0;
	for (int i = 0; i < CELLS; i++)
		sum += bar->temperature[i];
	return sum / CELLS;
}

int main(int argc, char **argv)
{
	struct bar bar = {.conductivity = 0.25};
	long steps = argc > 1 ? strtol(argv[1], NULL, 10) : STEPS;
	if (steps < 0 || steps > 1000000L) {
		fprintf(stderr, "steps: 0 to %d, not \"%s\"\n", 1000000, argv[1]);
		return EXIT_FAILURE;
	}
	bar.temperature[0] = 100.0;
	for (long i = 0; i < steps; i++) {
		step(&bar, 0.5);
		if (i % 100 == 0)
			printf("%6ld\t%8.4f\n", i, mean(&bar));
	}
	return fabs(mean(&bar)) > 0.0 ? EXIT_SUCCESS : 1;
}
'''
VIMRC = """set nocompatible nomodeline viminfo= noswapfile
syntax on
set number laststatus=2 ruler showcmd hlsearch incsearch background=dark belloff=all
"""
# Vim asks twice where the cursor is: after a character of doubtful width, and after a sequence without a trace.
VIM_POSITIONS = ((2, 2), (3, 1))


def mouse(button, row, col, release=False):
    """What the terminal sends for a button in the SGR form, rows and columns from 1."""
    return f"\x1b[<{button};{col};{row}{'m' if release else 'M'}"


def put_vim_files(stage, more=""):
    stage.write("demo/heat.c", C_FILE)
    stage.write(".vimrc", VIMRC + more)


@recording("vim-c-file", "vim", rows=40, cols=120)
def vim_c_file(stage):
    """Vim on a C file in syntax colours: scrolling by line, half page and page, a search with its matches marked,
    inserted and deleted lines, a horizontal split scrolled on its own, and a visual selection."""
    put_vim_files(stage)
    stage.start("vim", "heat.c", positions=VIM_POSITIONS)
    stage.keys(control("E") * 3, control("D"), control("U"), "G", "gg", "10j", "/temperature" + ENTER, "nn")
    stage.keys("O", "/* inserted */" + ENTER + "double inserted = 1.5e3;", ESCAPE, "jdd", "2u", control("R"))
    stage.keys(":split" + ENTER, "G", control("W") + "j", control("Y") * 2, "5dd", "P")
    stage.keys("gg", "8j", "0", "V", "jj", quiet=0.6)


@recording("vim-mouse", "vim")
def vim_mouse(stage):
    """Vim with the mouse in the SGR form and colours of 24 bits: clicks, a drag that selects, the wheel, a vertical
    split whose border is dragged, a block selection, and the popup of completions in insert mode."""
    put_vim_files(stage, "set mouse=a ttymouse=sgr complete=. termguicolors nowrap cursorline\ncolorscheme desert\n")
    stage.start("vim", "heat.c", positions=VIM_POSITIONS)
    stage.keys(mouse(0, 9, 20), mouse(0, 9, 20, True), mouse(65, 9, 20), mouse(65, 9, 20), mouse(64, 9, 20))
    stage.keys(mouse(0, 5, 10), mouse(32, 7, 24), mouse(0, 7, 24, True), ESCAPE, ":vsplit" + ENTER)
    stage.keys(mouse(0, 5, 40), mouse(32, 5, 50), mouse(0, 5, 50, True), "12Gzt", "4l", control("V"), "3j3l", ESCAPE)
    stage.keys("o", "st", control("N"), control("N"), quiet=0.8)


@recording("vim-quit", "bash", "vim")
def vim_quit(stage):
    """Vim started from a shell, used and quit: what stood on the screen before is there again, with the prompt below
    it and the cursor, keypad, mouse and paste modes as they were."""
    put_vim_files(stage, "set mouse=a ttymouse=sgr\n")
    start_bash(stage)
    stage.keys("seq -s ' ' 40" + ENTER, "vim heat.c" + ENTER, quiet=1.0)
    stage.keys("G", "ofirst added line", ESCAPE, ":set list" + ENTER, "gg", ":q!" + ENTER)
    stage.keys("echo back")


@recording("nano-edit", "nano")
def nano_edit(stage):
    """Nano with its title and help bars: a file in syntax colours, typing and deleting, a line longer than the
    screen, a search whose match is marked, and the question of what to save under."""
    stage.write("demo/heat.c", C_FILE)
    stage.write(".nanorc", "include /usr/share/nano/c.nanorc\nset linenumbers\nset constantshow\n")
    stage.start("nano", "heat.c")
    stage.keys(DOWN * 3, "int added; ", BACKSPACE * 3, PAGE_DOWN, DOWN * 2, control("E"), " // " + "long " * 14)
    stage.keys(control("A"), RIGHT, control("K"), control("U"), control("W"), "temperature" + ENTER, control("O"))
    stage.keys(control("C"), control("W"), "printf" + ENTER)
