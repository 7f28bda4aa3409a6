// The parser in any chunking, and with its fast paths against the state machine alone.
#include <gtest/gtest.h>

#include "text/RandomText.h"
#include "vt/RecordedEvents.h"

namespace zolt::vt {
namespace {

using namespace std::string_view_literals;

constexpr Piece kPieces[] = {{"a", 8},          {"some text", 8}, {"\u00e9", 3},     {"\u65e5\u672c", 3},
                             {"\U0001F600", 3}, {"e\u0301", 2},   {"\xFF", 1},       {"\xE6\x97", 1},
                             {"\xF0\x9F", 1},   {"\x80", 1},      {"\xC2\x9B", 1},   {"\xC2\x9D", 1},
                             {"\xC2\x9C", 1},   {"\xC2\x85", 1},  {"\n", 3},         {"\r", 2},
                             {"\x07", 2},       {"\x18", 1},      {"\x1A", 1},       {"\x1B", 4},
                             {"\x1B[", 6},      {"\x1B]", 3},     {"\x1BP", 2},      {"\x1B_", 1},
                             {"\x1B\\", 3},     {"\\", 1},        {"1", 4},          {"38", 2},
                             {";", 4},          {":", 2},         {"?", 2},          {">", 1},
                             {"$", 1},          {" ", 2},         {"m", 4},          {"H", 2},
                             {"q", 1},          {"(", 1},         {"0;", 2},         {"52;", 1},
                             {"\0"sv, 1},       {"\x7F", 1},      {"99999999999", 1}};

TEST(VtParserModel, ReportsTheSameEventsInAnyChunkingAndWithoutFastPaths) {
  RandomText random(17, kPieces);
  for (int round = 0; round < 4000; ++round) {
    const std::string text = random.text(60);
    const std::vector<std::string> whole = eventsOf(text);
    RecordedEvents bytewise;
    Parser byTable(bytewise);
    byTable.feedByTable(text);
    ASSERT_EQ(bytewise.lines, whole) << escaped(text);
    RecordedEvents split;
    Parser parser(split);
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t size = 1 + random.below(9);
      parser.feed(std::string_view(text).substr(at, size));
      at += size;
    }
    ASSERT_EQ(split.lines, whole) << escaped(text);
    ASSERT_EQ(parser.state(), byTable.state());
  }
}

TEST(VtParserModel, KeepsLongRunsOfTextComplete) {
  for (const std::string_view unit : {"x"sv, "\u00e9"sv, "\u65e5"sv, "\U0001F600"sv, "a\u00e9"sv, "\xFF"sv}) {
    for (const std::size_t count : {1U, 7U, 16U, 255U, 256U, 257U, 1000U}) {
      std::string text;
      std::string expected = "print ";
      for (std::size_t i = 0; i < count; ++i) {
        text += unit;
        expected += unit == "\xFF" ? "\uFFFD"sv : unit;
      }
      ASSERT_EQ(eventsOf(text), std::vector<std::string>{expected}) << count;
    }
  }
}

}  // namespace
}  // namespace zolt::vt
