#include "session/TerminalKey.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <utility>

namespace zolt {
namespace {

using Case = TerminalKey::Case;

std::string ctrl(const std::string& character) {
  return TerminalKey::ctrl(character).ansiSequence();
}

std::string function(std::int64_t number) {
  return TerminalKey::function(number).ansiSequence();
}

TEST(TerminalKey, SendsTheSequenceOfEachPlainKey) {
  const std::array<std::pair<Case, const char*>, 13> table{{
      {Case::Up, "\x1B\x5B\x41"},
      {Case::Down, "\x1B\x5B\x42"},
      {Case::Left, "\x1B\x5B\x44"},
      {Case::Right, "\x1B\x5B\x43"},
      {Case::Home, "\x1B\x5B\x48"},
      {Case::End, "\x1B\x5B\x46"},
      {Case::PageUp, "\x1B\x5B\x35\x7E"},
      {Case::PageDown, "\x1B\x5B\x36\x7E"},
      {Case::Delete, "\x1B\x5B\x33\x7E"},
      {Case::Backspace, "\x08"},
      {Case::Tab, "\x09"},
      {Case::Enter, "\x0D"},
      {Case::Escape, "\x1B"},
  }};
  for (const auto& [key, bytes] : table) {
    EXPECT_EQ(TerminalKey(key).ansiSequence(), bytes) << "case " << static_cast<int>(key);
  }
}

TEST(TerminalKey, NumbersItsCasesInOrder) {
  int number = 0;
  for (const Case each :
       {Case::Function, Case::Ctrl, Case::Text, Case::Up, Case::Down, Case::Left, Case::Right, Case::Home, Case::End,
        Case::PageUp, Case::PageDown, Case::Delete, Case::Backspace, Case::Tab, Case::Enter, Case::Escape}) {
    EXPECT_EQ(static_cast<int>(each), number++);
  }
}

TEST(TerminalKey, SendsBackspaceAsBsAndNotAsDel) {
  EXPECT_EQ(TerminalKey(Case::Backspace).ansiSequence(), std::string("\x08"));
}

TEST(TerminalKey, AddsTenToTheNumberOfAFunctionKeyAndSkipsNone) {
  EXPECT_EQ(function(1), "\x1B\x5B\x31\x31\x7E");
  EXPECT_EQ(function(5), "\x1B\x5B\x31\x35\x7E");
  EXPECT_EQ(function(6), "\x1B\x5B\x31\x36\x7E");
  EXPECT_EQ(function(12), "\x1B[22~");
  EXPECT_EQ(function(0), "\x1B[10~");
  EXPECT_EQ(function(-15), "\x1B[-5~");
  EXPECT_EQ(function(std::numeric_limits<std::int64_t>::max() - 10), "\x1B[9223372036854775807~");
}

TEST(TerminalKeyDeathTest, StopsTheProgramForAFunctionNumberThatOverflows) {
  EXPECT_DEATH(static_cast<void>(function(std::numeric_limits<std::int64_t>::max() - 9)), "overflow in an addition");
}

TEST(TerminalKey, SendsTheLowFiveBitsOfAControlCharacter) {
  for (int code = 0; code < 128; ++code) {
    const std::string character(1, static_cast<char>(code));
    EXPECT_EQ(ctrl(character), std::string(1, static_cast<char>(code & 0x1F))) << "code " << code;
  }
}

TEST(TerminalKey, SendsTheCustomaryControlBytes) {
  EXPECT_EQ(ctrl("c"), "\x03");
  EXPECT_EQ(ctrl("C"), "\x03");
  EXPECT_EQ(ctrl("d"), "\x04");
  EXPECT_EQ(ctrl("z"), "\x1A");
  EXPECT_EQ(ctrl("["), "\x1B");
  EXPECT_EQ(ctrl("@"), std::string(1, '\0'));
  EXPECT_EQ(ctrl(" "), std::string(1, '\0'));
  EXPECT_EQ(ctrl("1"), "\x11");
}

// One user-perceived character, whose ASCII code is that of LF.
TEST(TerminalKey, TakesACarriageReturnLineFeedPairForALineFeed) {
  EXPECT_EQ(ctrl("\r\n"), "\x0A");
}

TEST(TerminalKeyDeathTest, StopsTheProgramForAControlCharacterOutsideAscii) {
  const char* const reason = "Control with a character that has no ASCII code";
  EXPECT_DEATH(static_cast<void>(ctrl("\xC3\xA9")), reason);
  EXPECT_DEATH(static_cast<void>(ctrl("e\xCC\x81")), reason);
  EXPECT_DEATH(static_cast<void>(ctrl("\xF0\x9F\x98\x80")), reason);
  EXPECT_DEATH(static_cast<void>(ctrl("\xC2\x80")), reason);
  EXPECT_DEATH(static_cast<void>(ctrl("\xE9")), reason);
  EXPECT_DEATH(static_cast<void>(ctrl("")), reason);
}

TEST(TerminalKey, SendsTextUnchanged) {
  for (const std::string text : {"", "hello", "\n", "\xE2\x82\xAC\x1B[A"}) {
    EXPECT_EQ(TerminalKey::text(text).ansiSequence(), text);
  }
}

TEST(TerminalKey, IsEqualByCaseAndValue) {
  EXPECT_EQ(TerminalKey::ctrl("c"), TerminalKey::ctrl("c"));
  EXPECT_NE(TerminalKey::ctrl("c"), TerminalKey::ctrl("C"));
  EXPECT_NE(TerminalKey::ctrl("c"), TerminalKey::text("c"));
  EXPECT_NE(TerminalKey::function(1), TerminalKey::function(2));
  EXPECT_EQ(TerminalKey(Case::Up), TerminalKey(Case::Up));
  EXPECT_EQ(TerminalKey::ctrl("x").kind(), Case::Ctrl);
  EXPECT_EQ(TerminalKey::ctrl("x").characters(), "x");
}

}  // namespace
}  // namespace zolt
