#include <algorithm>

#include "vt/SequenceCase.h"

// Operating system commands and device control strings: "XTerm Control Sequences", "VT420 Programmer Reference", and
// what the terminals that brought them say of hyperlinks (8), notifications (9, 777), progress (9;4) and marks (133).
// Colours are written as XParseColor has them: "rgb:" scales, "#" gives the most significant bits.

namespace zolt::vt::test {

namespace {

constexpr auto kProgress = [](const Terminal& t, Progress::Kind kind, int percent) {
  return t.state().progress == Progress{.kind = kind, .percent = percent};
};

constexpr auto kIsMessage = [](Terminal& t, std::string_view title, std::string_view body) {
  const TerminalEvents events = t.takeEvents();
  return events.notifications.size() == 1 && events.notifications[0].title == title &&
         events.notifications[0].body == body;
};

constexpr auto kIsWritten = [](Terminal& t, ClipboardTarget target, std::string_view text) {
  const TerminalEvents events = t.takeEvents();
  return events.clipboardWrites.size() == 1 && events.clipboardWrites[0].target == target &&
         events.clipboardWrites[0].text == text && events.clipboardReads.empty();
};

constexpr auto kHasMark = [](const Terminal& t, int row, const RowMark& mark) {
  const auto marks = t.screen().grid().marks(row);
  return std::find(marks.begin(), marks.end(), mark) != marks.end();
};

constexpr SequenceCase kCases[] = {
    {.covers = "OSC 0",
     .says = "sets both titles",
     .input = "\033]0;a b\033\\",
     .screen = "",
     .title = "a b",
     .holds = [](Terminal& t) { return t.state().iconTitle == "a b" && t.takeEvents().titleChanged; }},
    {.covers = "OSC 0",
     .says = "also ends with BEL and with the C1 form of ST",
     .input = "\033]0;a\ab\033]0;c\302\234d",
     .screen = "bd",
     .title = "c"},
    {.covers = "OSC 0",
     .says = "has no effect if it is cancelled",
     .input = "\033]0;a\033\\\033]0;b\030c\033]0;d\032\033]0;e\302\205",
     .title = "a"},
    {.covers = "OSC 0",
     .says = "accepts semicolons and text in any script",
     .input = "\033]0;a;b: é日\033\\",
     .title = "a;b: é日"},
    {.covers = "OSC 0, OSC 2",
     .says = "drop control characters",
     .input = "\033]0;a\tb\r\nc\177d\033\\",
     .title = "abcd"},
    {.covers = "OSC 0, OSC 2",
     .says = "drop bidirectional controls",
     .input = "\033]2;a\342\200\256b\342\201\246c\033\\",
     .title = "abc"},
    {.covers = "OSC 0", .says = "may be empty", .input = "\033]0;a\033\\\033]0;\033\\", .title = ""},
    {.covers = "OSC 1",
     .says = "sets the icon title only",
     .input = "\033]0;a\033\\\033]1;b\033\\",
     .title = "a",
     .holds = [](Terminal& t) { return t.state().iconTitle == "b"; }},
    {.covers = "OSC 2",
     .says = "sets the window title only",
     .input = "\033]0;a\033\\\033]2;b\033\\",
     .title = "b",
     .holds = [](Terminal& t) { return t.state().iconTitle == "a" && t.takeEvents().titleChanged; }},
    {.covers = "OSC 4, OSC 10, OSC 11, OSC 12",
     .says = "terminates replies like the query",
     .input = "\033]4;1;?\a\033]11;?\a\033]11;?\033\\",
     .replies = "\033]4;1;rgb:cdcd/0000/0000\a\033]11;rgb:0000/0000/0000\a\033]11;rgb:0000/0000/0000\033\\"},
    {.covers = "OSC 4",
     .says = "sets a colour and reports it",
     .input = "\033]4;200;rgb:12/34/56\033\\\033]4;200;?\033\\",
     .replies = "\033]4;200;rgb:1212/3434/5656\033\\",
     .holds =
         [](Terminal& t) {
           return t.palette().indexed(200) == Rgb{0x12, 0x34, 0x56} && t.takeEvents().paletteChanged;
         }},
    {.covers = "OSC 4",
     .says = "reports the default colours",
     .input = "\033]4;1;?;16;?;21;?;231;?;232;?;255;?\033\\",
     .replies = "\033]4;1;rgb:cdcd/0000/0000\033\\\033]4;16;rgb:0000/0000/0000\033\\\033]4;21;rgb:0000/0000/"
                "ffff\033\\\033]4;231;rgb:ffff/ffff/ffff\033\\\033]4;232;rgb:0808/0808/0808\033\\\033]4;255;rgb:eeee/"
                "eeee/eeee\033\\"},
    {.covers = "OSC 4",
     .says = "sets and reports several",
     .input = "\033]4;1;#010203;2;#040506\033\\\033]4;1;?;2;?\033\\",
     .replies = "\033]4;1;rgb:0101/0202/0303\033\\\033]4;2;rgb:0404/0505/0606\033\\"},
    {.covers = "OSC 4",
     .says = "accepts 1 to 4 digits per component",
     .input = "\033]4;1;rgb:f/8/0;2;rgb:ffff/8000/"
              "0;3;#f80;4;#fff888000;5;#ffff80000000\033\\\033]4;1;?;2;?;3;?;4;?;5;?\033\\",
     .replies = "\033]4;1;rgb:ffff/8888/0000\033\\\033]4;2;rgb:ffff/8080/0000\033\\\033]4;3;rgb:f0f0/8080/"
                "0000\033\\\033]4;4;rgb:ffff/8888/0000\033\\\033]4;5;rgb:ffff/8080/0000\033\\"},
    {.covers = "OSC 4",
     .says = "ignores invalid colours and indices",
     .input = "\033]4;1;nonsense;256;#000000;2;#12345;x;#000000;3;#010203\033\\\033]4;256;?;1;?;2;?;3;?\033\\",
     .replies = "\033]4;1;rgb:cdcd/0000/0000\033\\\033]4;2;rgb:0000/cdcd/0000\033\\\033]4;3;rgb:0101/0202/0303\033\\"},
    {.covers = "OSC 7",
     .says = "sets the working directory and its host",
     .input = "\033]7;file://host/a/b%20c\033\\",
     .holds =
         [](Terminal& t) {
           return t.state().workingDirectory == "/a/b c" && t.state().workingDirectoryHost == "host";
         }},
    {.covers = "OSC 7",
     .says = "may omit the host",
     .input = "\033]7;file:///a/%C3%A9\033\\",
     .holds =
         [](Terminal& t) { return t.state().workingDirectory == "/a/é" && t.state().workingDirectoryHost.empty(); }},
    {.covers = "OSC 7",
     .says = "accepts a directory that ends in an escaped character",
     .input = "\033]7;file:///a%2F\033\\",
     .holds = [](Terminal& t) { return t.state().workingDirectory == "/a/"; }},
    {.covers = "OSC 7",
     .says = "clears the directory if it is empty",
     .input = "\033]7;file:///a\033\\\033]7;\033\\",
     .holds = [](Terminal& t) { return t.state().workingDirectory.empty(); }},
    {.covers = "OSC 7",
     .says = "ignores other schemes and invalid URLs",
     .input = "\033]7;file:///a\033\\\033]7;http://host/b\033\\\033]7;/c\033\\\033]7;file:///d%00\033\\\033]7;file:///"
              "e%2\033\\\033]7;file:///f%zz\033\\",
     .holds = [](Terminal& t) { return t.state().workingDirectory == "/a"; }},
    {.covers = "OSC 8",
     .says = "links text until it is ended",
     .input = "a\033]8;;http://h/\033\\b\033]8;;\033\\c",
     .runs = "[0]a[0]b<http://h/>[0]c"},
    {.covers = "OSC 8",
     .says = "accepts semicolons in a URI",
     .input = "\033]8;;http://h/?a;b\033\\x",
     .runs = "[0]x<http://h/?a;b>"},
    {.covers = "OSC 8",
     .says = "is not affected by SGR",
     .input = "\033]8;;http://h/\033\\a\033[0;1mb",
     .runs = "[0]a<http://h/>[0;1]b<http://h/>"},
    {.covers = "OSC 8",
     .says = "accepts an ID that joins parts into one link",
     .input = "\033]8;x=1:id=n;http://h/\033\\x",
     .runs = "[0]x<http://h/>",
     .holds = [](Terminal& t) { return t.screen().pen().link == LinkTarget{.id = "n", .uri = "http://h/"}; }},
    {.covers = "OSC 8",
     .says = "ignores a URI that has blanks or is not ASCII",
     .input = "\033]8;;http://h/a b\033\\x\033]8;;http://h/é\033\\y",
     .runs = "[0]xy"},
    {.covers = "OSC 8",
     .says = "does not link erased cells",
     .input = "\033]8;;http://h/\033\\abc\033[1;2H\033[X",
     .runs = "[0]a<http://h/>[0] [0]c<http://h/>"},
    {.covers = "OSC 9",
     .says = "posts a notification",
     .input = "\033]9;done: 1;2\033\\",
     .holds = [](Terminal& t) { return kIsMessage(t, "", "done: 1;2"); }},
    {.covers = "OSC 9",
     .says = "reports progress with 4, without a notification",
     .input = "\033]9;4;1;50\033\\",
     .holds =
         [](Terminal& t) { return kProgress(t, Progress::Kind::Normal, 50) && t.takeEvents().notifications.empty(); }},
    {.covers = "OSC 9",
     .says = "reports an error, indeterminate progress and a pause",
     .input = "\033]9;4;2;10\033\\",
     .holds =
         [](Terminal& t) {
           const bool isError = kProgress(t, Progress::Kind::Error, 10);
           t.feed("\033]9;4;3\033\\");
           const bool isEndless = t.state().progress.kind == Progress::Kind::Indeterminate;
           t.feed("\033]9;4;4;20\033\\");
           return isError && isEndless && kProgress(t, Progress::Kind::Paused, 20);
         }},
    {.covers = "OSC 9",
     .says = "ends progress, and clamps it to 100",
     .input = "\033]9;4;1;500\033\\",
     .holds =
         [](Terminal& t) {
           const bool isFull = kProgress(t, Progress::Kind::Normal, 100);
           t.feed("\033]9;4;0\033\\");
           return isFull && kProgress(t, Progress::Kind::None, 0);
         }},
    {.covers = "OSC 10",
     .says = "sets the foreground and reports it",
     .input = "\033]10;?\033\\\033]10;#010203\033\\\033]10;?\033\\",
     .replies = "\033]10;rgb:ffff/ffff/ffff\033\\\033]10;rgb:0101/0202/0303\033\\",
     .holds =
         [](Terminal& t) {
           return t.palette().role(Palette::Role::Foreground) == Rgb{1, 2, 3} && t.takeEvents().paletteChanged;
         }},
    {.covers = "OSC 10, OSC 11, OSC 12",
     .says = "apply further colours to the next role",
     .input = "\033]10;#010101;#020202;#030303\033\\\033]10;?;?;?\033\\",
     .replies = "\033]10;rgb:0101/0101/0101\033\\\033]11;rgb:0202/0202/0202\033\\\033]12;rgb:0303/0303/0303\033\\"},
    {.covers = "OSC 11",
     .says = "sets the background and reports it",
     .input = "\033]11;?\033\\\033]11;#010203\033\\\033]11;?\033\\",
     .replies = "\033]11;rgb:0000/0000/0000\033\\\033]11;rgb:0101/0202/0303\033\\",
     .holds =
         [](Terminal& t) {
           return t.palette().role(Palette::Role::Background) == Rgb{1, 2, 3};
         }},
    {.covers = "OSC 11, OSC 12",
     .says = "starts at its own role",
     .input = "\033]11;#010101;#020202\033\\\033]11;?;?\033\\\033]10;?\033\\",
     .replies = "\033]11;rgb:0101/0101/0101\033\\\033]12;rgb:0202/0202/0202\033\\\033]10;rgb:ffff/ffff/ffff\033\\"},
    {.covers = "OSC 12",
     .says = "sets the cursor colour and reports it",
     .input = "\033]12;#010203\033\\\033]12;?\033\\",
     .replies = "\033]12;rgb:0101/0202/0303\033\\",
     .holds =
         [](Terminal& t) {
           return t.palette().role(Palette::Role::Cursor) == Rgb{1, 2, 3};
         }},
    {.covers = "OSC 12",
     .says = "ignores further colours",
     .input = "\033]12;#010203;#040506;?\033\\\033]10;?;?\033\\",
     .replies = "\033]10;rgb:ffff/ffff/ffff\033\\\033]11;rgb:0000/0000/0000\033\\"},
    {.covers = "OSC 52",
     .says = "sets the clipboard",
     .input = "\033]52;c;aGVsbG8=\033\\",
     .replies = "",
     .holds = [](Terminal& t) { return kIsWritten(t, ClipboardTarget::Clipboard, "hello"); }},
    {.covers = "OSC 52",
     .says = "accepts base64 without padding",
     .input = "\033]52;c;aGVsbG8\033\\",
     .holds = [](Terminal& t) { return kIsWritten(t, ClipboardTarget::Clipboard, "hello"); }},
    {.covers = "OSC 52",
     .says = "sets the selection with p",
     .input = "\033]52;p;aGVsbG8=\033\\",
     .holds = [](Terminal& t) { return kIsWritten(t, ClipboardTarget::Primary, "hello"); }},
    {.covers = "OSC 52",
     .says = "empties the clipboard if the payload is not base64",
     .input = "\033]52;c;!\033\\",
     .holds = [](Terminal& t) { return kIsWritten(t, ClipboardTarget::Clipboard, ""); }},
    {.covers = "OSC 52",
     .says = "does not answer queries",
     .input = "\033]52;c;aGVsbG8=\033\\\033]52;c;?\033\\",
     .replies = "",
     .holds = [](Terminal& t) { return kIsWritten(t, ClipboardTarget::Clipboard, "hello"); }},
    {.covers = "OSC 52",
     .says = "passes queries on if the settings allow it",
     .input = "\033]52;c;?\033\\\033]52;p;?\033\\\033]52;c;?\033\\",
     .allowsReading = true,
     .replies = "",
     .holds =
         [](Terminal& t) {
           const TerminalEvents events = t.takeEvents();
           return events.clipboardReads == std::vector{ClipboardTarget::Clipboard, ClipboardTarget::Primary} &&
                  events.clipboardWrites.empty();
         }},
    {.covers = "OSC 104",
     .says = "resets one colour",
     .input = "\033]4;1;#010203;2;#010203\033\\\033]104;1\033\\\033]4;1;?;2;?\033\\",
     .replies = "\033]4;1;rgb:cdcd/0000/0000\033\\\033]4;2;rgb:0101/0202/0303\033\\"},
    {.covers = "OSC 104",
     .says = "resets several colours",
     .input = "\033]4;1;#010203;2;#010203\033\\\033]104;1;2\033\\\033]4;1;?;2;?\033\\",
     .replies = "\033]4;1;rgb:cdcd/0000/0000\033\\\033]4;2;rgb:0000/cdcd/0000\033\\"},
    {.covers = "OSC 104",
     .says = "resets all colours without a parameter",
     .input = "\033]4;1;#010203;255;#010203\033\\\033]104\033\\\033]4;1;?;255;?\033\\",
     .replies = "\033]4;1;rgb:cdcd/0000/0000\033\\\033]4;255;rgb:eeee/eeee/eeee\033\\"},
    {.covers = "OSC 110",
     .says = "resets only the foreground",
     .input = "\033]10;#010101;#020202;#030303\033\\\033]110\033\\\033]10;?;?;?\033\\",
     .replies = "\033]10;rgb:ffff/ffff/ffff\033\\\033]11;rgb:0202/0202/0202\033\\\033]12;rgb:0303/0303/0303\033\\"},
    {.covers = "OSC 111",
     .says = "resets only the background",
     .input = "\033]10;#010101;#020202;#030303\033\\\033]111\033\\\033]10;?;?;?\033\\",
     .replies = "\033]10;rgb:0101/0101/0101\033\\\033]11;rgb:0000/0000/0000\033\\\033]12;rgb:0303/0303/0303\033\\"},
    {.covers = "OSC 112",
     .says = "resets only the cursor colour",
     .input = "\033]12;?\033\\\033]10;#010101;#020202;#030303\033\\\033]112\a\033]10;?;?\033\\",
     .replies = "\033]12;rgb:ffff/ffff/ffff\033\\\033]10;rgb:0101/0101/0101\033\\\033]11;rgb:0202/0202/0202\033\\",
     .holds =
         [](Terminal& t) {
           return t.palette().role(Palette::Role::Cursor) == Rgb{255, 255, 255};
         }},
    {.covers = "OSC 133",
     .says = "marks a prompt, a command and its output at the cursor",
     .input = "\033]133;A\033\\$ \033]133;B\033\\ls\r\n\033]133;C\033\\x",
     .holds =
         [](Terminal& t) {
           return kHasMark(t, 0, {.column = 0, .kind = HistoryMarkKind::PromptStart}) &&
                  kHasMark(t, 0, {.column = 2, .kind = HistoryMarkKind::CommandStart}) &&
                  kHasMark(t, 1, {.column = 0, .kind = HistoryMarkKind::OutputStart});
         }},
    {.covers = "OSC 133",
     .says = "marks the end of a command and its status",
     .input = "a\033]133;D;2\033\\",
     .holds =
         [](Terminal& t) {
           return kHasMark(t, 0, {.column = 1, .kind = HistoryMarkKind::CommandEnd, .exitStatus = 2});
         }},
    {.covers = "OSC 133",
     .says = "takes a missing status as 0",
     .input = "\033]133;D\033\\",
     .holds =
         [](Terminal& t) {
           return kHasMark(t, 0, {.column = 0, .kind = HistoryMarkKind::CommandEnd, .exitStatus = 0});
         }},
    {.covers = "OSC 133",
     .says = "accepts options after the kind, and ignores other kinds",
     .input = "\033]133;A;cl=m\033\\\033]133;Z\033\\",
     .screen = "",
     .holds = [](Terminal& t) { return t.screen().grid().marks(0).size() == 1; }},
    {.covers = "OSC 777",
     .says = "posts a notification with a title",
     .input = "\033]777;notify;t;b;c\033\\",
     .holds = [](Terminal& t) { return kIsMessage(t, "t", "b;c"); }},
    {.covers = "OSC 777",
     .says = "drops control characters",
     .input = "\033]777;notify;t\tu;b\177c\033\\",
     .holds = [](Terminal& t) { return kIsMessage(t, "tu", "bc"); }},
    {.covers = "OSC 777",
     .says = "ignores anything but notifications",
     .input = "\033]777;other;t;b\033\\",
     .holds = [](Terminal& t) { return t.takeEvents().notifications.empty(); }},

    {.covers = "DECRQSS",
     .says = "reports the rendition",
     .input = "\033P$qm\033\\\033[1;4:3;38;5;200;48;2;1;2;3m\033P$qm\033\\",
     .replies = "\033P1$r0m\033\\\033P1$r0;1;4:3;38:5:200;48:2::1:2:3m\033\\"},
    {.covers = "DECRQSS",
     .says = "reports the margins",
     .input = "\033P$qr\033\\\033P$qs\033\\\033[2;3r\033[?69h\033[4;5s\033P$qr\033\\\033P$qs\033\\",
     .replies = "\033P1$r1;5r\033\\\033P1$r1;10s\033\\\033P1$r2;3r\033\\\033P1$r4;5s\033\\"},
    {.covers = "DECRQSS",
     .says = "reports the size",
     .input = "\033P$qt\033\\\033P$q$|\033\\\033P$q*|\033\\",
     .replies = "\033P1$r5t\033\\\033P1$r10$|\033\\\033P1$r5*|\033\\"},
    {.covers = "DECRQSS",
     .says = "reports the cursor's shape",
     .input = "\033P$q q\033\\\033[6 q\033P$q q\033\\",
     .replies = "\033P1$r1 q\033\\\033P1$r6 q\033\\"},
    {.covers = "DECRQSS",
     .says = "reports the protection",
     .input = "\033P$q\"q\033\\\033[1\"q\033P$q\"q\033\\\033[2\"q\033P$q\"q\033\\",
     .replies = "\033P1$r0\"q\033\\\033P1$r1\"q\033\\\033P1$r0\"q\033\\"},
    {.covers = "DECRQSS",
     .says = "does not report protection by SPA",
     .input = "\033V\033P$q\"q\033\\",
     .replies = "\033P1$r0\"q\033\\"},
    {.covers = "DECRQSS",
     .says = "reports the conformance level",
     .input = "\033P$q\"p\033\\\033[63;1\"p\033P$q\"p\033\\",
     .replies = "\033P1$r64;1\"p\033\\\033P1$r63;1\"p\033\\"},
    {.covers = "DECRQSS",
     .says = "reports the extent of rectangles",
     .input = "\033[2*x\033P$q*x\033\\",
     .replies = "\033P1$r2*x\033\\"},
    {.covers = "DECRQSS",
     .says = "reports an error for unknown settings",
     .input = "\033P$qz\033\\\033P$q\033\\\033P$qmm\033\\",
     .replies = "\033P0$r\033\\\033P0$r\033\\\033P0$r\033\\"},
    {.covers = "DECRQSS",
     .says = "accepts the C1 form of ST",
     .input = "\033P$qr\302\234x",
     .screen = "x",
     .replies = "\033P1$r1;5r\033\\"},
    {.covers = "XTGETTCAP",
     .says = "reports the name and the colours",
     .input = "\033P+q544E\033\\\033P+q436F\033\\\033P+q524742\033\\",
     .replies = "\033P1+r544E=787465726D2D323536636F6C6F72\033\\\033P1+r436F=323536\033\\\033P1+r524742=38\033\\"},
    {.covers = "XTGETTCAP",
     .says = "accepts lower case digits",
     .input = "\033P+q544e\033\\",
     .replies = "\033P1+r544E=787465726D2D323536636F6C6F72\033\\"},
    {.covers = "XTGETTCAP",
     .says = "reports several",
     .input = "\033P+q436F;524742\033\\",
     .replies = "\033P1+r436F=323536;524742=38\033\\"},
    {.covers = "XTGETTCAP",
     .says = "reports an error for unknown, empty and malformed names",
     .input = "\033P+q5A5A5A\033\\\033P+q\033\\\033P+qxyz\033\\",
     .replies = "\033P0+r\033\\\033P0+r\033\\\033P0+r\033\\"},
    {.covers = "XTGETTCAP",
     .says = "stops at the first unknown name",
     .input = "\033P+q436F;5A5A5A;524742\033\\",
     .replies = "\033P1+r436F=323536\033\\"},
};

}  // namespace

std::span<const SequenceCase> stringCases() {
  return kCases;
}

}  // namespace zolt::vt::test
