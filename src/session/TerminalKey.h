#pragma once

#include <cstdint>
#include <string>
#include <utility>

namespace zolt {

/// A key that is sent to a shell as a sequence of its own. A value.
///
/// Three choices differ from common practice, on purpose: backspace sends BS, not DEL; the cursor keys always send the
/// normal-mode form; a function key n sends n + 10, with no number skipped.
class TerminalKey {
 public:
  /// In the order that numbers them: the three that carry a value, then those that carry none.
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
  /// `character` is one user-perceived character in UTF-8; one outside ASCII stops the program when it is encoded.
  static TerminalKey ctrl(std::string character) { return {Case::Ctrl, 0, std::move(character)}; }
  static TerminalKey text(std::string text) { return {Case::Text, 0, std::move(text)}; }
  /// A key without a value.
  TerminalKey(Case plain) : m_case(plain) {}

  Case kind() const { return m_case; }
  /// What `ctrl` and `text` carry.
  const std::string& characters() const { return m_characters; }

  /// The bytes to send. Stops the program for `ctrl` with a character that has no ASCII code, and for `function` with a
  /// number whose sum with 10 overflows.
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
