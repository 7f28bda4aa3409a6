#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "text/RandomText.h"
#include "vt/SequenceCase.h"

// What a terminal answers comes in as if it was typed. A program, or a file that is shown, must not be able to choose
// it: answers are made of constants and numbers of the terminal's own.

namespace zolt::vt::test {
namespace {

constexpr std::string_view kMarker = "MARKER";
constexpr std::string_view kMarkerInHex = "4d41524b4552";
constexpr std::string_view kMarkerInBase64 = "TUFSS0VS";

// Every request that there is, and ENQ, which older terminals answered with a text of the user's.
constexpr std::string_view kRequests =
    "\005\033Z\033[c\033[>c\033[=c\033[5n\033[6n\033[?6n\033[?15n\033[?25n\033[?26n\033[?53n\033[?55n\033[?56n\033[?62n"
    "\033[?63;1n\033[?75n\033[?85n\033[?996n\033[4$p\033[99$p\033[?1$p\033[?9999$p\033[11t\033[13t\033[14t\033[15t\033["
    "16t"
    "\033[18t\033[19t\033[20t\033[21t\033[x\033[1x\033[1$w\033[2$w\033[>q\033[?0m\033[?1m\033[?2m\033[?4m\033[?u\033[#R"
    "\033[?2048h\033[?2048l\033[1;1;1;1;5;10*y\033P$qm\033\\\033P$qr\033\\\033P$qs\033\\\033P$qt\033\\\033P$q q\033\\"
    "\033P$q\"q\033\\\033P$q\"p\033\\\033P$q$|\033\\\033P$q*|\033\\\033P$q*x\033\\\033P$qz\033\\\033P+q544E\033\\"
    "\033P+q5A5A\033\\\033]0;?\033\\\033]1;?\033\\\033]2;?\033\\\033]4;1;?\033\\\033]7;?\033\\\033]8;?\033\\\033]8;;?"
    "\033\\"
    "\033]9;?\033\\\033]10;?;?;?\033\\\033]52;c;?\033\\\033]52;p;?\033\\\033]52;;?\033\\\033]133;?\033\\\033]777;?"
    "\033\\";

// What could keep a text or give it back at once. "@" stands for the text.
constexpr std::string_view kBearers[] = {
    "@",
    "@\033[3b",
    "\033]0;@\033\\",
    "\033]0;@\a",
    "\033]1;@\033\\",
    "\033]2;@\033\\\033[22t",
    "\033]2;@\033\\\033[22t\033]2;x\033\\\033[23t",
    "\033]4;@;?\033\\",
    "\033]4;1;@\033\\",
    "\033]4;1;?;@;?\033\\",
    "\033]7;file://@/@\033\\",
    "\033]8;@;@\033\\x",
    "\033]8;id=@;http://@/\033\\x",
    "\033]9;@\033\\",
    "\033]9;4;1;@\033\\",
    "\033]10;@\033\\",
    "\033]10;?;@;?\033\\",
    "\033]52;c;@\033\\",
    "\033]52;@;@\033\\",
    "\033]52;@;?\033\\",
    "\033]104;@\033\\",
    "\033]133;A;@\033\\",
    "\033]133;D;@\033\\",
    "\033]777;notify;@;@\033\\",
    "\033]@\033\\",
    "\033]@;?\033\\",
    "\033P$q@\033\\",
    "\033P$qm@\033\\",
    "\033P+q@\033\\",
    "\033P+q544E;@\033\\",
    "\033P1;2|@\033\\",
    "\033P@\033\\",
    "\033_@\033\\",
    "\033^@\033\\",
    "\033X@\033\\",
    "\033[@",
    "\033[>@q",
    "\033[?@$p",
    "\033[1;1;1;1;1;6*y@",
    "\033]0;@",
    "\033]2;@\030",
    "\033P$q@",
    "\033(@\033)@",
};

std::string filled(std::string_view bearer, std::string_view text) {
  std::string out;
  for (const char c : bearer) {
    if (c == '@') {
      out += text;
    } else {
      out += c;
    }
  }
  return out;
}

std::string lowered(std::string text) {
  std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

void expectNoMarker(const std::string& replies) {
  EXPECT_EQ(replies.find(kMarker), std::string::npos);
  EXPECT_EQ(replies.find(kMarkerInBase64), std::string::npos);
  EXPECT_EQ(lowered(replies).find(kMarkerInHex), std::string::npos);
}

// The length of the answer that `replies` begins with; 0 where it is none.
std::size_t replyLength(std::string_view replies) {
  if (replies.starts_with("\033[")) {
    constexpr std::string_view kFinals = "cnRxtumyQ{";
    const std::size_t end = replies.find_first_not_of("?>0123456789;$#*", 2);
    return end != std::string_view::npos && kFinals.find(replies[end]) != std::string_view::npos ? end + 1 : 0;
  }
  if (replies.starts_with("\033P") || replies.starts_with("\033]")) {
    const std::size_t end = replies.find('\033', 2);
    return end != std::string_view::npos && replies.substr(end).starts_with("\033\\") ? end + 2 : 0;
  }
  return 0;
}

// That they are control sequences and strings of printable ASCII, one after the other, and nothing between: no line
// end, no control that a shell would act upon.
void expectWellFormed(std::string_view replies) {
  EXPECT_TRUE(std::ranges::all_of(replies, [](char c) { return c == '\033' || (c >= 0x20 && c < 0x7F); }));
  while (!replies.empty()) {
    const std::size_t length = replyLength(replies);
    ASSERT_NE(length, 0U) << "after the ESC: " << replies.substr(1, 40);
    replies.remove_prefix(length);
  }
}

TEST(VtSafeReplies, HoldNothingThatAProgramSent) {
  for (const std::string_view bearer : kBearers) {
    for (const std::string_view text : {kMarker, kMarkerInHex, kMarkerInBase64}) {
      SCOPED_TRACE(filled(bearer.starts_with('\033') ? bearer.substr(1) : bearer, text));
      Terminal terminal(5, 10);
      terminal.feed(filled(bearer, text));
      const std::string atOnce = terminal.takeReplies();
      expectNoMarker(atOnce);
      expectWellFormed(atOnce);
      // What was not ended is.
      terminal.feed("\030");
      terminal.feed(kRequests);
      const std::string asked = terminal.takeReplies();
      EXPECT_FALSE(asked.empty());
      expectNoMarker(asked);
      expectWellFormed(asked);
    }
  }
}

TEST(VtSafeReplies, HoldNothingThatAProgramSentInAnyOrder) {
  std::vector<std::string> filledBearers;
  std::vector<Piece> pieces;
  for (const std::string_view bearer : kBearers) {
    for (const std::string_view text : {kMarker, kMarkerInHex, kMarkerInBase64}) {
      filledBearers.push_back(filled(bearer, text));
    }
  }
  for (const std::string& each : filledBearers) {
    pieces.push_back({.text = each, .weight = 1});
  }
  for (const std::string_view each :
       {"\033", "\033[", "\033]", "\033P",     "\033\\",    "\a",    "\030",    "?",        ";",        "$q", "+q",
        "2",    "0",     "\r\n",  "\033[?47h", "\033[?47l", "\033c", "\033[!p", "\302\233", "\302\234", "日"}) {
    pieces.push_back({.text = each, .weight = 6});
  }
  pieces.push_back({.text = kRequests, .weight = 20});
  constexpr std::uint64_t kSeeds = 200;
  std::size_t answered = 0;
  for (std::uint64_t seed = 0; seed < kSeeds; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomText random(seed, pieces);
    Terminal terminal(5, 10);
    terminal.feed(random.text(200));
    const std::string replies = terminal.takeReplies();
    answered += replies.empty() ? 0 : 1;
    expectNoMarker(replies);
    expectWellFormed(replies);
    if (HasFailure()) break;
  }
  EXPECT_GT(answered, kSeeds / 2);
}

TEST(VtSafeReplies, AreWellFormedWhateverComes) {
  constexpr std::uint64_t kSeeds = 200;
  for (std::uint64_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomText random(seed);
    Terminal terminal(5, 10, readableSettings());
    std::string text = random.text(300);
    for (std::size_t i = 0; i < text.size() / 20; ++i) {
      text[random.below(text.size())] = static_cast<char>(random.below(256));
    }
    terminal.feed(text);
    terminal.feed("\030\033]0;\033\\");  // the title may be of any script
    expectWellFormed(terminal.takeReplies());
    terminal.feed(kRequests);
    expectWellFormed(terminal.takeReplies());
  }
}

TEST(VtSafeReplies, HoldWhatTheSettingsAllow) {
  const auto answer = [](TerminalSettings settings, std::string_view request) {
    Terminal terminal(5, 10, std::move(settings));
    terminal.feed("AB\033]1;MARKER 1\033\\\033]2;MARKER\033\\\033]52;c;TUFSS0VS\033\\");
    terminal.feed(request);
    return terminal.takeReplies();
  };
  EXPECT_EQ(answer({}, "\033[20t\033[21t\033[1;1;1;1;1;2*y"), "");
  EXPECT_EQ(answer(readableSettings(), "\033[20t\033[21t"), "\033]LMARKER 1\033\\\033]lMARKER\033\\");
  EXPECT_EQ(answer(readableSettings(), "\033[1;1;1;1;1;2*y"), "\033P1!~FF7D\033\\");
  // The clipboard is the window's: it answers, or not.
  EXPECT_EQ(answer(readableSettings(), "\033]52;c;?\033\\"), "");
}

TEST(VtSafeReplies, HoldNoControlsOfATitleThatMayBeRead) {
  Terminal terminal(5, 10, readableSettings());
  terminal.feed("\033]2;a\rb\nc\td\177e\033\\\033[21t");
  EXPECT_EQ(terminal.takeReplies(), "\033]labcde\033\\");
}

TEST(VtSafeReplies, LetTheClipboardBeReadWhereTheSettingsAllowIt) {
  Terminal usual(5, 10);
  usual.feed("\033]52;c;?\033\\");
  EXPECT_TRUE(usual.takeEvents().clipboardReads.empty());
  Terminal readable(5, 10, readableSettings());
  readable.feed("\033]52;c;?\033\\");
  EXPECT_EQ(readable.takeEvents().clipboardReads, std::vector{ClipboardTarget::Clipboard});
  readable.tellClipboard(ClipboardTarget::Clipboard, "copied");
  EXPECT_EQ(readable.takeReplies(), "\033]52;c;Y29waWVk\033\\");
  usual.tellClipboard(ClipboardTarget::Clipboard, "copied");
  EXPECT_EQ(usual.takeReplies(), "");
}

TEST(VtSafeReplies, LetNoProgramWriteTheClipboardWhereTheSettingsForbidIt) {
  TerminalSettings settings;
  settings.allowClipboardWrites = false;
  Terminal terminal(5, 10, settings);
  terminal.feed("\033]52;c;TUFSS0VS\033\\");
  EXPECT_TRUE(terminal.takeEvents().clipboardWrites.empty());
}

TEST(VtSafeReplies, AreBoundedWhereNobodyTakesThem) {
  constexpr std::size_t kMaxBytes = std::size_t{1} << 20;
  Terminal terminal(5, 10);
  std::size_t asked = 0;
  for (; asked < 4 * kMaxBytes; asked += kRequests.size()) {
    terminal.feed(kRequests);
  }
  const std::string replies = terminal.takeReplies();
  EXPECT_GT(replies.size(), kMaxBytes / 2);
  EXPECT_LE(replies.size(), kMaxBytes);
  expectWellFormed(replies);
}

}  // namespace
}  // namespace zolt::vt::test
