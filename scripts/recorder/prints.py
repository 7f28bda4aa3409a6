"""Programs that print and end: bars of progress, and text of many scripts."""
from .recording import recording

THUMB, HAND = "\U0001F44D\U0001F3FD", "\U0001F44B\U0001F3FF"  # with skin tones
FAMILY = "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"
WIDE_TEXT = "\n".join([
    "Chinese 中文字符 Japanese 日本語テキスト Korean 한국어 fullwidth ＡＢＣ１２３ half ｶﾀｶﾅ",
    "a" * 77 + "漢字 a wide character that ends in the last column, then one that does not fit",
    "b" * 79 + "漢 one that has only the last column left",
    "c" * 78 + "漢" + "d" * 78 + "漢",
    "漢字" * 30,
    f"emoji: \U0001F600\U0001F680\u2764\uFE0F\u2764\uFE0E \u231A\u26A1 skin: {THUMB}{HAND} "
    "keycap: 1\uFE0F\u20E3#\uFE0F\u20E3 end",
    f"joined: {FAMILY} \U0001F469\U0001F3FE\u200D\U0001F680 \U0001F3F3\uFE0F\u200D\U0001F308 "
    "\U0001F9D1\u200D\U0001F91D\u200D\U0001F9D1 end",
    "flags: \U0001F1E9\U0001F1EA\U0001F1EF\U0001F1F5\U0001F1E7\U0001F1F7 "
    "odd: \U0001F1E9 \U0001F1EA\U0001F1EF\U0001F1F5 tag: "
    "\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F end",
    "e" * 79 + "\U0001F600" + "f" * 77 + FAMILY + " at the margin",
    "g" * 79 + "e\u0301 combining at the margin, then many: a\u0300\u0301\u0302\u0303\u0304\u0305 o\u0308\u0323 end",
    "decomposed: Amelie\u0301 A\u030Angstro\u0308m composed: Am\u00E9lie \u00C5ngstr\u00F6m",
    "jamo: \u1112\u1161\u11AB\u1100\u1173\u11AF and alone: \u1112 \u1161 \u11AB end",
    "Arabic: \u0627\u0644\u0639\u0631\u0628\u064A\u0651\u064E\u0629 "
    "Hebrew: \u05E2\u05B4\u05D1\u05B0\u05E8\u05B4\u05D9\u05EA end",
    "Devanagari: \u0928\u092E\u0938\u094D\u0924\u0947 \u0915\u094D\u0937\u093F "
    "Thai: \u0E2A\u0E27\u0E31\u0E2A\u0E14\u0E35 \u0E01\u0E33 Tamil: \u0BA8\u0BBF end",
    "nothing wide: [\u200B] [\u2060] [\uFEFF] [\u00AD] [\u200E\u200F] joiner alone: [\u200D] selector alone: [\uFE0F]",
    "ambiguous: \u00B1\u00D7\u2026\u2190\u2192\u25A0\u25CB\u2605 "
    "box: \u250C\u2500\u252C\u2500\u2510\u2502\u2588\u2591\u2592\u2593 braille: \u2801\u28FF private: \uE0A0\uE0B0 end",
    "tab\tafter\twide 漢\ttab\t字\ttab",
]) + "\n"


@recording("progress-bars", "bash")
def progress_bars(stage):
    """Bars of progress: one redrawn with carriage returns, figures that grow and shrink in place, several rows
    redrawn by moving the cursor up, as package managers do, and a row erased when its work is done."""
    stage.bring("progress-bars")
    stage.start("bash", "progress-bars")
    stage.end()


@recording("progress-pv", "pv", "dd", "bash")
def progress_pv(stage):
    """The progress of pv and of dd as those write it to a terminal: a line rewritten over itself by carriage
    returns."""
    pv = "pv --force --size 600000 --rate-limit 300000 --interval 0.2 --width 60 --progress --bytes --name demo"
    stage.start(
        "bash", "-c", f"head -c 600000 /dev/zero | {pv} >/dev/null; "
        "{ head -c 1000000 /dev/zero; sleep 2.2; head -c 1000000 /dev/zero; } | "
        "dd bs=1000 of=/dev/null status=progress")
    stage.end()


@recording("progress-scroll-region", "bash")
def progress_scroll_region(stage):
    """Lines of output that scroll above a bar of progress kept in the last row by a scrolling region with the cursor
    saved and restored, as apt does; the region is undone and the bar gone at the end."""
    stage.bring("progress-scroll-region")
    stage.start("bash", "progress-scroll-region")
    stage.end()


@recording("wide-text", "cat", rows=40)
def wide_text(stage):
    """Text of many scripts printed as it is: wide characters at the right margin and across it, emoji with joiners,
    skin tones, flags and selectors, combining marks, Hangul in parts, scripts from right to left, characters of no
    width."""
    stage.write("demo/wide.txt", WIDE_TEXT)
    stage.start("cat", "wide.txt")
    stage.end()


@recording("wide-text-narrow", "cat", rows=60, cols=13)
def wide_text_narrow(stage):
    """The same text on an odd number of columns, where characters of two columns meet the margin all the time, and it
    scrolls."""
    stage.write("demo/wide.txt", WIDE_TEXT)
    stage.start("cat", "wide.txt")
    stage.end()
