"""Pagers: less by itself, and as git uses it."""
from .editors import C_FILE
from .recording import ENTER, PAGE_DOWN, PAGE_UP, control, recording

GIT = {
    "GIT_AUTHOR_NAME": "A U Thor",
    "GIT_AUTHOR_EMAIL": "author@example.com",
    "GIT_COMMITTER_NAME": "A U Thor",
    "GIT_COMMITTER_EMAIL": "author@example.com",
    "GIT_CONFIG_NOSYSTEM": "1",
}
GIT_CONFIG = "[init]\n\tdefaultBranch = main\n[color]\n\tui = always\n[advice]\n\tdetachedHead = false\n"

# A manual's page: *bold* and _underlined_ words become overstrikes.
MANUAL = """*NAME*
       demo - a page in the manner of the manuals

*SYNOPSIS*
       *demo* [*-abc*] [*--output*=_file_] _input_ ...

*DESCRIPTION*
       The program *demo* reads each _input_ and writes what it finds. Bold words are
       struck over themselves; _underlined_ ones over a low line, as typewriters did.
""" + "".join(
    f"""
   *Section {number}*
       *-{letter}*, *--option-{number}*=_value_
              Sets option {number} to _value_, which is a number from 0 to {number * 100}. Without
              it the _default_ of {number} is taken. See *demo_{number}*(1) as well.
""" for number, letter in enumerate("abcdefghijkl", 1))


def overstruck(text):
    """The text with its marks made into backspaces, as a formatter of manuals writes them."""
    made, style = [], None
    for index, character in enumerate(text):
        inner = text[index - 1:index].isalnum() and text[index + 1:index + 2].isalnum()
        if character in "*_" and style in (None, character) and not (character == "_" and inner):
            style = None if style else character
        elif style and not character.isspace():
            made.append(f"{character if style == '*' else '_'}\b{character}")
        else:
            made.append(character)
    return "".join(made)


@recording("less-manual", "less")
def less_manual(stage):
    """Less on a manual's page with bold and underlined words: forward and back by line and page, which scrolls both
    ways, a search with its matches marked, and the jump to the end."""
    stage.write("demo/demo.txt", overstruck(MANUAL))
    stage.start("less", "-i", "demo.txt")
    stage.keys(" ", "jjj", "kk", PAGE_DOWN, PAGE_UP, "G", control("B"), "d", "u", "&option-1" + ENTER, "&" + ENTER)
    stage.keys("g", "/default" + ENTER, "n", "n", "N", "y", "y", "e")


def commit(stage, minute, message):
    date = f"2001-02-03T04:{minute:02}:06+0000"
    stage.prepare("git", "add", ".", **GIT)
    stage.prepare("git", "commit", "-q", "-m", message, GIT_AUTHOR_DATE=date, GIT_COMMITTER_DATE=date)


def make_repository(stage):
    stage.write(".gitconfig", GIT_CONFIG)
    stage.set(**GIT)
    stage.prepare("git", "init", "-q")
    stage.write("demo/heat.c", C_FILE)
    commit(stage, 1, "Heat spreads along a bar")
    stage.write("demo/README", "Heat that spreads along a bar.\n")
    commit(stage, 2, "Say what this is")
    stage.prepare("git", "checkout", "-q", "-b", "finer")
    stage.write("demo/heat.c", C_FILE.replace("CELLS 64", "CELLS 256"))
    commit(stage, 3, "Four times as many cells")
    stage.write("demo/heat.c", C_FILE.replace("CELLS 64", "CELLS 256").replace("0.25", "0.125"))
    commit(stage, 4, "Conduct less, so that the finer cells are stable")
    stage.prepare("git", "checkout", "-q", "main")
    stage.write("demo/README", "Heat that spreads along a bar.\n\nUsage: heat [STEPS]\n")
    commit(stage, 5, "Name the argument")
    merged = "2001-02-03T04:06:06+0000"
    stage.prepare("git", "merge", "-q", "--no-ff", "-m", "Merge branch 'finer'", "finer",
                  GIT_AUTHOR_DATE=merged, GIT_COMMITTER_DATE=merged)
    stage.prepare("git", "tag", "v1.0")
    # Each longer than the last: by its date, which is fixed, a file never changes.
    for number in range(7, 27):
        revisions = "".join(f"Revision {earlier}\n" for earlier in range(7, number + 1))
        stage.write("demo/README", f"Heat that spreads along a bar.\n\nUsage: heat [STEPS]\n\n{revisions}")
        commit(stage, number, f"Revision {number}, in words that take some room to say")


@recording("git-log", "git", rows=40, cols=60)
def git_log(stage):
    """The graph of a small repository in colours, without a pager, up to git's end: lines that wrap, and the end of the
    output left on the screen."""
    make_repository(stage)
    stage.start(
        "git", "--no-pager", "log", "--graph", "--color", "--format=%C(auto)%h%d %an %ad %s", "--date=iso")
    stage.end()


@recording("git-log-pager", "git", "less")
def git_log_pager(stage):
    """Git's log with changes, through less -R on the alternate screen: colours that go through the pager, a search, a
    line longer than the screen moved sideways, and back."""
    make_repository(stage)
    stage.set(GIT_PAGER="less -R", LESS="")
    stage.start("git", "log", "--graph", "-p", "--color", "--date=iso")
    stage.keys(" ", "j", "k", "G", control("U"), "/cells" + ENTER, "n", "-S" + ENTER, "\x1b[C", "\x1b[D")


@recording("git-oneline-quit", "bash", "git", "less")
def git_oneline_quit(stage):
    """The graph on one line a commit, from a shell and back to it, with less as git sets it up: it quits at once
    where all fits on the screen, and where not it pages on the primary screen, where what it showed stays when it is
    quit."""
    make_repository(stage)
    stage.set(GIT_PAGER="less")
    stage.start("bash", "--noprofile", "--norc")
    stage.keys("PS1='$ '" + ENTER, "git log --graph --oneline --color -5" + ENTER)
    stage.keys("git log --graph --oneline --color" + ENTER, "jj", "q", "git status --short --branch" + ENTER)
