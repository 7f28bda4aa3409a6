#include "session/TerminalKey.h"

#include <array>
#include <string_view>

#include "base/CheckedMath.h"
#include "base/Fatal.h"

namespace zolt {

namespace {

// For the cases from Up on, in order.
constexpr std::array<std::string_view, 13> kPlainSequences{
    "\x1B[A",   // Up
    "\x1B[B",   // Down
    "\x1B[D",   // Left
    "\x1B[C",   // Right
    "\x1B[H",   // Home
    "\x1B[F",   // End
    "\x1B[5~",  // PageUp
    "\x1B[6~",  // PageDown
    "\x1B[3~",  // Delete
    "\x08",     // Backspace
    "\x09",     // Tab
    "\x0D",     // Enter
    "\x1B",     // Escape
};

std::string controlByte(std::string_view character) {
  // CR LF is one character, with the ASCII code of LF.
  if (character == "\r\n") character = "\n";
  precondition(character.size() == 1 && static_cast<unsigned char>(character[0]) < 0x80,
               "Control with a character that has no ASCII code");
  return std::string(1, static_cast<char>(character[0] & 0x1F));
}

}  // namespace

std::string TerminalKey::ansiSequence() const {
  switch (m_case) {
    case Case::Function:
      return "\x1B[" + std::to_string(checkedAdd(m_number, 10)) + "~";
    case Case::Ctrl:
      return controlByte(m_characters);
    case Case::Text:
      return m_characters;
    default:
      return std::string(kPlainSequences[static_cast<std::size_t>(m_case) - static_cast<std::size_t>(Case::Up)]);
  }
}

}  // namespace zolt
