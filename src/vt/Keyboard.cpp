#include "vt/Keyboard.h"

#include "vt/InputText.h"
#include "vt/LegacyKeys.h"
#include "vt/ProgressiveKeys.h"
#include "vt/TypedText.h"

namespace zolt::vt {

namespace {

// Enter, Tab and Backspace stay what they were until every key is asked for: whoever sits before a program that died
// with the flags set can type "reset".
bool isLifeline(Key key) {
  return key == Key::Enter || key == Key::Tab || key == Key::Backspace;
}

// Whether the key types what is text to the program, where not every key is told.
bool typesText(const KeyEvent& event, const KeyRow& row) {
  const Modifiers held = event.modifiers;
  if (isLifeline(row.key)) return held.without(kLocks).isEmpty();
  // A key of a character that has no text is a dead one.
  const bool types = row.kind == KeyKind::Character || !typedText(event, row).empty();
  return types && !held.hasAny(kCommandModifiers);
}

}  // namespace

std::string encodeKey(const KeyEvent& event, const KeyboardModes& modes) {
  const KeyRow& row = keyRow(event.key);
  const auto asks = [&](std::uint8_t flag) { return (modes.flags & flag) != 0; };
  const bool isRelease = event.action == KeyAction::Release;
  const bool tellsAction = asks(keyFlags::reportEvents) && event.action != KeyAction::Press;
  if (isRelease && !tellsAction) return {};
  if (asks(keyFlags::reportAllKeys)) return encodeProgressive(event, row, modes.flags);

  if (row.kind == KeyKind::Modifier) return {};
  if (isRelease && (isLifeline(row.key) || typesText(event, row))) return {};

  const bool legacy = !asks(keyFlags::disambiguate);
  const bool told = tellsAction && !isLifeline(row.key) && !typesText(event, row);
  if (legacy && !told && hasLegacyEncoding(event, row)) return encodeLegacy(event, row, modes);
  if (modes.flags == 0) return {};
  if (!typesText(event, row)) return encodeProgressive(event, row, modes.flags);
  return isLifeline(row.key) ? encodeLegacy(event, row, modes) : toUtf8(typedText(event, row));
}

}  // namespace zolt::vt
