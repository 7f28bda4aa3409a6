#include "vt/input/Keyboard.h"

#include "vt/input/InputText.h"
#include "vt/input/LegacyKeys.h"
#include "vt/input/ProgressiveKeys.h"
#include "vt/input/TypedText.h"

namespace zolt::vt {

namespace {

// Enter, Tab and Backspace keep their legacy encoding unless all keys are reported, so that the user can still type
// "reset" after a program has crashed with flags set.
bool isLifeline(Key key) {
  return key == Key::Enter || key == Key::Tab || key == Key::Backspace;
}

// Whether the key sends plain text, provided that not all keys are reported.
bool typesText(const KeyEvent& event, const KeyRow& row) {
  const Modifiers held = event.modifiers;
  if (isLifeline(row.key)) return held.without(kLocks).isEmpty();
  // A character key without text is a dead key, and counts as typing.
  const bool types = row.kind == KeyKind::Character || !typedText(event, row).empty();
  return types && !held.hasAny(kCommandModifiers);
}

}  // namespace

bool tellsModifiers(const KeyboardModes& modes) {
  return (modes.flags & (keyFlags::disambiguate | keyFlags::reportAllKeys)) != 0 || modes.modifyOtherKeys > 1;
}

std::string encodeKey(const KeyEvent& event, const KeyboardModes& modes) {
  const KeyRow& row = keyRow(event.key);
  const auto has = [&](std::uint8_t flag) { return (modes.flags & flag) != 0; };
  const bool isRelease = event.action == KeyAction::Release;
  const bool reportsAction = has(keyFlags::reportEvents) && event.action != KeyAction::Press;
  if (isRelease && !reportsAction) return {};
  if (has(keyFlags::reportAllKeys)) return encodeProgressive(event, row, modes.flags);

  if (row.kind == KeyKind::Modifier) return {};
  if (isRelease && (isLifeline(row.key) || typesText(event, row))) return {};

  const bool legacy = !has(keyFlags::disambiguate);
  const bool isEscapeCode = reportsAction && !isLifeline(row.key) && !typesText(event, row);
  if (legacy && !isEscapeCode && hasLegacyEncoding(event, row)) return encodeLegacy(event, row, modes);
  if (modes.flags == 0) return {};
  if (!typesText(event, row)) return encodeProgressive(event, row, modes.flags);
  return isLifeline(row.key) ? encodeLegacy(event, row, modes) : toUtf8(typedText(event, row));
}

}  // namespace zolt::vt
