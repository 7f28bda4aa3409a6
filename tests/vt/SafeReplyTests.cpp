#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "text/RandomText.h"
#include "vt/SequenceCase.h"

// The shell reads a terminal's replies as if they had been typed. So neither a program nor a file that is displayed may
// choose their content: replies consist of constants and the terminal's own numbers.

namespace zolt::vt::test {
namespace {

constexpr std::string_view kMarker = "MARKER";
constexpr std::string_view kMarkerInHex = "4d41524b4552";
constexpr std::string_view kMarkerInBase64 = "TUFSS0VS";

// Every query, and ENQ, which older terminals answered with a text that the user had set.
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

// Sequences that could store a text, or echo it at once. "@" stands for the text.
constexpr std::string_view kCarriers[] = {
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

std::string filled(std::string_view carrier, std::string_view text) {
  std::string out;
  for (const char c : carrier) {
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

// The length of the reply at the start of `replies`, or 0 if it is malformed.
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

// Nothing but control sequences and strings of printable ASCII: no line ends, and no controls that a shell would act
// on.
void expectWellFormed(std::string_view replies) {
  EXPECT_TRUE(std::ranges::all_of(replies, [](char c) { return c == '\033' || (c >= 0x20 && c < 0x7F); }));
  while (!replies.empty()) {
    const std::size_t length = replyLength(replies);
    ASSERT_NE(length, 0U) << "after the ESC: " << replies.substr(1, 40);
    replies.remove_prefix(length);
  }
}

TEST(VtSafeReplies, ContainNothingThatAProgramSent) {
  for (const std::string_view carrier : kCarriers) {
    for (const std::string_view text : {kMarker, kMarkerInHex, kMarkerInBase64}) {
      SCOPED_TRACE(filled(carrier.starts_with('\033') ? carrier.substr(1) : carrier, text));
      Terminal terminal({.rows = 5, .columns = 10});
      terminal.feed(filled(carrier, text));
      const std::string atOnce = terminal.takeReplies();
      expectNoMarker(atOnce);
      expectWellFormed(atOnce);
      // Cancel unterminated sequences.
      terminal.feed("\030");
      terminal.feed(kRequests);
      const std::string asked = terminal.takeReplies();
      EXPECT_FALSE(asked.empty());
      expectNoMarker(asked);
      expectWellFormed(asked);
    }
  }
}

TEST(VtSafeReplies, ContainNothingThatAProgramSentInAnyOrder) {
  std::vector<std::string> filledCarriers;
  std::vector<Piece> pieces;
  for (const std::string_view carrier : kCarriers) {
    for (const std::string_view text : {kMarker, kMarkerInHex, kMarkerInBase64}) {
      filledCarriers.push_back(filled(carrier, text));
    }
  }
  for (const std::string& each : filledCarriers) {
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
    Terminal terminal({.rows = 5, .columns = 10});
    terminal.feed(random.text(200));
    const std::string replies = terminal.takeReplies();
    answered += replies.empty() ? 0 : 1;
    expectNoMarker(replies);
    expectWellFormed(replies);
    if (HasFailure()) break;
  }
  EXPECT_GT(answered, kSeeds / 2);
}

TEST(VtSafeReplies, AreWellFormedForAnyInput) {
  constexpr std::uint64_t kSeeds = 200;
  for (std::uint64_t seed = 0; seed < kSeeds && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomText random(seed);
    Terminal terminal({.rows = 5, .columns = 10}, readableSettings());
    std::string text = random.text(300);
    for (std::size_t i = 0; i < text.size() / 20; ++i) {
      text[random.below(text.size())] = static_cast<char>(random.below(256));
    }
    terminal.feed(text);
    terminal.feed("\030\033]0;\033\\");  // a title may be in any script
    expectWellFormed(terminal.takeReplies());
    terminal.feed(kRequests);
    expectWellFormed(terminal.takeReplies());
  }
}

TEST(VtSafeReplies, ContainWhatTheSettingsAllow) {
  const auto answer = [](TerminalSettings settings, std::string_view request) {
    Terminal terminal({.rows = 5, .columns = 10}, std::move(settings));
    terminal.feed("AB\033]1;MARKER 1\033\\\033]2;MARKER\033\\\033]52;c;TUFSS0VS\033\\");
    terminal.feed(request);
    return terminal.takeReplies();
  };
  EXPECT_EQ(answer({}, "\033[20t\033[21t\033[1;1;1;1;1;2*y"), "");
  EXPECT_EQ(answer(readableSettings(), "\033[20t\033[21t"), "\033]LMARKER 1\033\\\033]lMARKER\033\\");
  EXPECT_EQ(answer(readableSettings(), "\033[1;1;1;1;1;2*y"), "\033P1!~FF7D\033\\");
  // The clipboard belongs to the window, which answers separately.
  EXPECT_EQ(answer(readableSettings(), "\033]52;c;?\033\\"), "");
}

TEST(VtSafeReplies, ContainNoControlCharactersFromATitle) {
  Terminal terminal({.rows = 5, .columns = 10}, readableSettings());
  terminal.feed("\033]2;a\rb\nc\td\177e\033\\\033[21t");
  EXPECT_EQ(terminal.takeReplies(), "\033]labcde\033\\");
}

TEST(VtSafeReplies, RevealTheClipboardOnlyIfTheSettingsAllowIt) {
  Terminal usual({.rows = 5, .columns = 10});
  usual.feed("\033]52;c;?\033\\");
  EXPECT_TRUE(usual.takeEvents().clipboardReads.empty());
  Terminal readable({.rows = 5, .columns = 10}, readableSettings());
  readable.feed("\033]52;c;?\033\\");
  EXPECT_EQ(readable.takeEvents().clipboardReads, std::vector{ClipboardTarget::Clipboard});
  readable.reportClipboard(ClipboardTarget::Clipboard, "copied");
  EXPECT_EQ(readable.takeReplies(), "\033]52;c;Y29waWVk\033\\");
  usual.reportClipboard(ClipboardTarget::Clipboard, "copied");
  EXPECT_EQ(usual.takeReplies(), "");
}

TEST(VtSafeReplies, DoNotSetTheClipboardIfTheSettingsForbidIt) {
  TerminalSettings settings;
  settings.allowClipboardWrites = false;
  Terminal terminal({.rows = 5, .columns = 10}, settings);
  terminal.feed("\033]52;c;TUFSS0VS\033\\");
  EXPECT_TRUE(terminal.takeEvents().clipboardWrites.empty());
}

TEST(VtSafeReplies, AreBoundedIfNobodyTakesThem) {
  constexpr std::size_t kMaxBytes = std::size_t{1} << 20;
  Terminal terminal({.rows = 5, .columns = 10});
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
