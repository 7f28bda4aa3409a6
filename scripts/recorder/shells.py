"""Shells that are typed into: prompts, line editing, histories, completion."""
from .recording import BACKSPACE, DOWN, ENTER, LEFT, RIGHT, TAB, UP, control, recording

COLOURED_FILES = {
    "demo/notes.txt": "first line\nsecond line\nthird line\n",
    "demo/build.sh": "#!/bin/sh\necho building\n",
    "demo/archive.tar.gz": "",
    "demo/picture.png": "",
    "demo/src/main.c": "int main(void) { return 0; }\n",
    "demo/src/table.c": "int table[4];\n",
}
BASHRC = r"""PS1='\[\e[1;32m\]user@demo\[\e[0m\]:\[\e[1;34m\]\w\[\e[0m\]\$ '
HISTFILE=
alias ls='ls --color=auto'
"""
ZSHRC = """autoload -Uz compinit && compinit -u -D
zstyle ':completion:*' menu select
zstyle ':completion:*' group-name ''
zstyle ':completion:*:descriptions' format '%F{yellow}-- %d --%f'
zstyle ':completion:*' list-colors 'di=1;34:ex=1;32:*.gz=1;31:*.png=1;35'
PROMPT='%B%F{green}%n@%m%f%b:%B%F{blue}%~%f%b%# '
RPROMPT='%F{yellow}[%?]%f'
"""
FISH_CONFIG = """set -g fish_greeting
function fish_prompt
    set_color --bold green; echo -n user@demo; set_color normal; echo -n ':'
    set_color blue; echo -n (prompt_pwd); set_color normal; echo -n '> '
end
function fish_right_prompt
    set_color yellow; echo -n right; set_color normal
end
"""


def put_files(stage):
    for path, text in COLOURED_FILES.items():
        stage.write(path, text, executable=path.endswith(".sh"))


def start_bash(stage):
    stage.write(".bashrc", BASHRC)
    stage.start("bash", "--noprofile")


@recording("bash-editing", "bash", "ls")
def bash_editing(stage):
    """Bash with a coloured prompt: typing, coloured columns of ls, a command line that wraps, editing it at both ends
    with Control-A and Control-E, deleting with Backspace and Control-W, inserting in the middle, and the history."""
    put_files(stage)
    start_bash(stage)
    stage.keys("ls --color" + ENTER, "ls -l --color --time-style=long-iso src" + ENTER, "cat notes.txt" + ENTER)
    stage.keys("echo this command line is so long that it goes on in the next row of the terminal, where it ends")
    stage.keys(control("A"), RIGHT * 5, "now ", control("E"), " or nearly", control("W"), "soon")
    stage.keys(LEFT * 30, BACKSPACE * 4, "XY", control("K"), ENTER)
    stage.keys(UP, UP, ENTER, "ech" + BACKSPACE * 3, control("R"), "ls -", control("G"))
    stage.keys("fals" + TAB, ENTER, "printf 'tab\\there\\n'" + ENTER)
    stage.keys("echo unfinished", LEFT * 4)


@recording("bash-narrow", "bash", rows=8, cols=20)
def bash_narrow(stage):
    """A prompt that nearly fills a narrow terminal of few rows: each command line wraps several times, is edited
    across the wraps, fills a row to its very end, and scrolls the screen."""
    start_bash(stage)
    stage.keys("echo 0123456789 0123456789 0123456789 0123456789")
    stage.keys(control("A"), RIGHT * 25, "<<>>", BACKSPACE * 2, control("E"), ENTER)
    stage.keys("echo" + " abcdefghi" * 9, LEFT * 40, "Z", control("A"), control("E"), ENTER)
    stage.keys("seq 5" + ENTER, "# " + "x" * 23, LEFT, LEFT)


@recording("zsh-completion", "zsh")
def zsh_completion(stage):
    """Zsh with prompts on both sides: a menu of completions in groups, walked with Tab and the arrows, which is drawn
    below the prompt and wiped again; the right prompt giving way to a long line; a mark for output without a last
    newline."""
    put_files(stage)
    stage.write(".zshrc", ZSHRC)
    stage.start("zsh", "-d", quiet=1.0)
    stage.keys("printf partial" + ENTER, "false" + ENTER, "ls --color ", TAB, TAB, DOWN, RIGHT, ENTER, ENTER)
    stage.keys("echo a line that is long enough to reach the right prompt, and more", control("A"), control("E"), ENTER)
    stage.keys("cat n" + TAB, ENTER, "cat s" + TAB, TAB, TAB)


@recording("fish-suggestions", "fish")
def fish_suggestions(stage):
    """Fish: the command line coloured as it is typed, a suggestion from the history behind the cursor, taken with the
    right arrow, the pager of completions with its descriptions, and a wrong command in its colour."""
    put_files(stage)
    stage.write(".config/fish/config.fish", FISH_CONFIG)
    stage.start("fish", quiet=1.5)
    stage.keys("echo 'a suggested line' | cat -n" + ENTER, "ls --color=always src" + ENTER, "echo", RIGHT, ENTER)
    stage.keys("nosuchprogram --now", control("U"))
    stage.keys("ls --", TAB, TAB, DOWN, DOWN, quiet=0.8)
