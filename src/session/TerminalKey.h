#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace zolt {

/// A key that is sent to the shell as a sequence. A value.
///
/// Three choices differ from common practice, on purpose: backspace sends BS, not DEL; the cursor keys always send the
/// normal-mode form; a function key n sends n + 10, with no number skipped.
class TerminalKey {
 public:
  /// The order is fixed: the three that carry a value come first.
  enum class Case : std::uint8_t {
    Function,
    Ctrl,
    Text,
    Up,
    Down,
    Left,
    Right,
    Home,
    End,
    PageUp,
    PageDown,
    Delete,
    Backspace,
    Tab,
    Enter,
    Escape,
  };

  static TerminalKey function(std::int64_t number) { return {Case::Function, number, {}}; }
  /// `character` is one user-perceived character in UTF-8; encoding one outside ASCII aborts the program.
  static TerminalKey ctrl(std::string character) { return {Case::Ctrl, 0, std::move(character)}; }
  static TerminalKey text(std::string text) { return {Case::Text, 0, std::move(text)}; }
  /// A key without a value.
  TerminalKey(Case plain) : m_case(plain) {}

  Case kind() const { return m_case; }
  /// The value of `ctrl` and `text`.
  const std::string& characters() const { return m_characters; }

  /// The bytes to send. Aborts the program for `ctrl` with a non-ASCII character, and for `function` with a number that
  /// overflows when 10 is added.
  std::string ansiSequence() const;

  friend bool operator==(const TerminalKey&, const TerminalKey&) = default;

 private:
  TerminalKey(Case kind, std::int64_t number, std::string characters)
      : m_case(kind), m_number(number), m_characters(std::move(characters)) {}

  Case m_case;
  std::int64_t m_number = 0;
  std::string m_characters;
};

}  // namespace zolt
