#include "vt/input/ProgressiveKeys.h"

#include "vt/input/InputText.h"
#include "vt/input/TypedText.h"

namespace zolt::vt {

namespace {

std::string numberText(char32_t number) {
  return std::to_string(static_cast<std::uint32_t>(number));
}

// 0 for characters that cannot identify a key.
char32_t keyCharacter(char32_t character) {
  return isPlain(character) ? character : 0;
}

// ":shifted:base", without the parts that are unknown.
std::string alternates(const KeyEvent& event, char32_t number) {
  const auto other = [&](char32_t character) {
    return keyCharacter(character) == number ? 0 : keyCharacter(character);
  };
  const char32_t shifted = event.modifiers.hasAny(Modifier::Shift) ? other(event.shifted) : 0;
  const char32_t base = other(event.baseLayout);
  std::string text;
  if (shifted != 0 || base != 0) text += ":";
  if (shifted != 0) text += numberText(shifted);
  if (base != 0) text.append(":").append(numberText(base));
  return text;
}

// Programs compare modifiers exactly, and would not recognize text keys with a lock on; locks are reported for them
// only with reportAllKeys.
Modifiers reportedModifiers(Modifiers held, const KeyRow& row, std::uint8_t flags) {
  const bool typesText = row.kind == KeyKind::Character || (row.kind == KeyKind::Keypad && row.key != Key::KeypadEnter);
  return typesText && (flags & keyFlags::reportAllKeys) == 0 ? held.without(kLocks) : held;
}

std::string codePoints(const std::u32string& text) {
  std::string numbers;
  for (const char32_t scalar : text) {
    if (!numbers.empty()) numbers += ":";
    numbers += numberText(scalar);
  }
  return numbers;
}

std::string associatedText(const KeyEvent& event, const KeyRow& row, std::uint8_t flags) {
  constexpr std::uint8_t needed = keyFlags::reportAllKeys | keyFlags::reportText;
  if ((flags & needed) != needed || event.action == KeyAction::Release) return {};
  return event.modifiers.hasAny(kCommandModifiers) ? std::string() : codePoints(typedText(event, row));
}

}  // namespace

std::string encodeProgressive(const KeyEvent& event, const KeyRow& row, std::uint8_t flags) {
  const bool isCharacter = row.kind == KeyKind::Character;
  const char32_t number = isCharacter ? keyCharacter(event.character) : row.number;
  const std::string text = associatedText(event, row, flags);
  // An unknown key, such as from an input method: send its text.
  if (number == 0 && text.empty()) {
    return event.action == KeyAction::Release ? std::string() : toUtf8(typedText(event, row));
  }

  std::string keyField = numberText(number);
  if (isCharacter && (flags & keyFlags::reportAlternates) != 0) keyField += alternates(event, number);

  const unsigned modifiers = 1U + reportedModifiers(event.modifiers, row, flags).bits();
  std::string modifierField = modifiers == 1 ? "" : std::to_string(modifiers);
  if ((flags & keyFlags::reportEvents) != 0 && event.action != KeyAction::Press) {
    modifierField = std::to_string(modifiers).append(":").append(std::to_string(static_cast<int>(event.action)));
  }

  std::string sequence = "\x1B[";
  if (keyField != "1" || !modifierField.empty()) sequence += keyField;
  if (!modifierField.empty() || !text.empty()) sequence += ";" + modifierField;
  if (!text.empty()) sequence += ";" + text;
  return sequence + row.final;
}

}  // namespace zolt::vt
