#include "vt/input/TypedText.h"

#include "vt/input/InputText.h"

namespace zolt::vt {

namespace {

bool isAscii(char32_t character) {
  return character < 0x80;
}

}  // namespace

char32_t layoutCharacter(const KeyEvent& event) {
  const bool shift = event.modifiers.hasAny(Modifier::Shift);
  const char32_t character = shift && event.shifted != 0 ? event.shifted : event.character;
  return isPlain(character) ? character : 0;
}

std::u32string typedText(const KeyEvent& event, const KeyRow& row) {
  if (row.kind == KeyKind::Keypad) {
    if (row.key == Key::KeypadEnter) return {};
    std::u32string text = plainScalars(event.text);
    return text.empty() ? std::u32string(1, static_cast<char32_t>(row.character)) : text;
  }
  if (row.kind != KeyKind::Character) return {};
  std::u32string text = plainScalars(event.text);
  if (!event.modifiers.hasAny(kCommandModifiers)) return text;
  // With a command modifier the key counts, not its text: systems report none, or text from a layer meant for typing.
  const char32_t character = layoutCharacter(event);
  const bool useKey = text.empty() || (isAscii(character) && !isAscii(text.front()));
  return useKey && character != 0 ? std::u32string(1, character) : text;
}

KeyEvent mainKeyboardEvent(const KeyEvent& event, const KeyRow& row) {
  KeyEvent other = event;
  other.shifted = 0;
  other.baseLayout = 0;
  if (row.key == Key::KeypadEnter) {
    other.key = Key::Enter;
    return other;
  }
  other.key = Key::Character;
  other.character = static_cast<char32_t>(row.character);
  other.text = toUtf8(typedText(event, row));
  return other;
}

}  // namespace zolt::vt
