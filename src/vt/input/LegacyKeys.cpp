#include "vt/input/LegacyKeys.h"

#include <optional>

#include "vt/input/InputText.h"
#include "vt/input/TypedText.h"

namespace zolt::vt {

namespace {

constexpr const char* kEscape = "\x1B";
constexpr Modifiers kAlts = Modifier::Alt | Modifier::Meta;
constexpr Modifiers kKnownToXterm = Modifier::Shift | Modifier::Control | kAlts;
constexpr Modifiers kUnknownToXterm = Modifier::Super | Modifier::Hyper;

// xterm's modifier parameter, 1 for none. Meta has the bit that is Super's in the kitty protocol.
int modifierParameter(Modifiers held) {
  constexpr Modifiers same = Modifier::Shift | Modifier::Alt | Modifier::Control;
  const int meta = held.hasAny(Modifier::Meta) ? 8 : 0;
  return 1 + (held.bits() & same.bits()) + meta;
}

// Control with characters outside columns 4 to 7 of the ASCII table: Xlib's rules, which include table 3-5 of the VT100
// User Guide, and "?" from the kitty protocol's table of legacy encodings.
struct ControlAlias {
  char character;
  char control;
};

// clang-format off
constexpr ControlAlias kControlAliases[] = {
    {' ', 0x00},
    {'2', 0x00},
    {'3', 0x1B},
    {'4', 0x1C},
    {'5', 0x1D},
    {'6', 0x1E},
    {'7', 0x1F},
    {'8', 0x7F},
    {'/', 0x1F},
    {'?', 0x7F},
};
// clang-format on

std::optional<char> controlOf(char32_t character) {
  if (character >= '@' && character <= '~') return static_cast<char>(character & 0x1F);
  for (const ControlAlias& alias : kControlAliases) {
    if (character == static_cast<char32_t>(alias.character)) return alias.control;
  }
  return std::nullopt;
}

// In layouts without Latin letters, Control uses the PC-101 layout: otherwise there would be no Control-C.
std::optional<char> controlOf(const KeyEvent& event) {
  const char32_t typed = layoutCharacter(event);
  const bool foreign = typed >= 0x80 && event.baseLayout >= 'a' && event.baseLayout <= 'z';
  return controlOf(foreign ? event.baseLayout : typed);
}

std::string otherKey(char32_t character, Modifiers held, const KeyboardModes& modes) {
  const std::string code = std::to_string(static_cast<std::uint32_t>(character));
  const std::string modifiers = std::to_string(modifierParameter(held));
  return modes.formatOtherKeys == 0 ? "\x1B[27;" + modifiers + ";" + code + "~"
                                    : "\x1B[" + code + ";" + modifiers + "u";
}

std::string escapePrefix(Modifiers held, const KeyboardModes& modes) {
  return held.hasAny(kAlts) && modes.altSendsEscape ? kEscape : "";
}

// Whether modifyOtherKeys encodes the key by its character code.
bool isOtherCharacter(char32_t character, bool hasControl, Modifiers held, int level) {
  if (level <= 0 || character == 0) return false;
  const bool control = held.hasAny(Modifier::Control);
  if (level == 1) return control && !hasControl;
  // Shift selects another character, except for the space bar.
  return control || held.hasAny(kAlts) || (character == ' ' && held.hasAny(Modifier::Shift));
}

std::string encodeCharacter(const KeyEvent& event, const KeyRow& row, const KeyboardModes& modes) {
  const Modifiers held = event.modifiers;
  const std::optional<char> control = held.hasAny(Modifier::Control) ? controlOf(event) : std::nullopt;
  const char32_t character = layoutCharacter(event);
  if (isOtherCharacter(character, control.has_value(), held, modes.modifyOtherKeys)) {
    return otherKey(character, held, modes);
  }
  if (control) return escapePrefix(held, modes) + *control;
  const std::u32string text = typedText(event, row);
  return text.empty() ? "" : escapePrefix(held, modes) + toUtf8(text);
}

// The modifiers with which level 1 of modifyOtherKeys encodes a key that has a control character. Backspace and Escape
// have conventional encodings with all of them.
Modifiers encodedOnLevelOne(Key key) {
  if (key == Key::Enter) return Modifier::Shift | Modifier::Control;
  if (key == Key::Tab) return Modifier::Control;
  return {};
}

std::string controlText(Key key, Modifiers held, const KeyboardModes& modes) {
  if (key == Key::Enter) return modes.newLine ? "\r\n" : "\r";
  if (key == Key::Tab) return held.hasAny(Modifier::Shift) ? "\x1B[Z" : "\t";
  if (key == Key::Escape) return kEscape;
  return modes.backarrowIsBackspace == held.hasAny(Modifier::Control) ? "\x7F" : "\b";
}

std::string encodeControl(const KeyEvent& event, const KeyRow& row, const KeyboardModes& modes) {
  const Modifiers held = event.modifiers;
  if (modes.modifyOtherKeys > 0) {
    const Modifiers encoded = modes.modifyOtherKeys == 1 ? encodedOnLevelOne(row.key) : kKnownToXterm;
    if (held.hasAny(encoded)) return otherKey(row.number, held, modes);
  }
  return escapePrefix(held, modes) + controlText(row.key, held, modes);
}

enum class Introducer { Csi, Ss3 };

// A key with a letter, after `introducer` unless there are modifiers to encode.
std::string withLetter(char letter, Introducer introducer, Modifiers held, int form) {
  const int parameter = modifierParameter(held);
  const std::string modifiers = std::to_string(parameter);
  const std::string plain = introducer == Introducer::Ss3 ? "\x1BO" : "\x1B[";
  if (parameter == 1 || form < 0) return plain + letter;
  if (form == 0) return plain + modifiers + letter;
  if (form == 1) return "\x1B[" + modifiers + letter;
  return (form == 2 ? "\x1B[1;" : "\x1B[>1;") + modifiers + letter;
}

std::string withNumber(int number, Modifiers held, int form) {
  const int parameter = modifierParameter(held);
  const std::string start = std::to_string(number);
  if (parameter == 1 || form < 0) return "\x1B[" + start + "~";
  return (form <= 2 ? "\x1B[" : "\x1B[>") + start + ";" + std::to_string(parameter) + "~";
}

std::string encodeKeypad(const KeyEvent& event, const KeyRow& row, const KeyboardModes& modes) {
  const bool overruled = modes.numLockEndsKeypadMode && event.modifiers.hasAny(Modifier::NumLock);
  if (modes.applicationKeypad && !overruled) {
    return withLetter(row.legacyFinal, Introducer::Ss3, event.modifiers, modes.modifyFunctionKeys);
  }
  const KeyEvent other = mainKeyboardEvent(event, row);
  return encodeLegacy(other, keyRow(other.key), modes);
}

}  // namespace

bool hasLegacyEncoding(const KeyEvent& event, const KeyRow& row) {
  return row.kind != KeyKind::Extra && row.kind != KeyKind::Modifier && !event.modifiers.hasAny(kUnknownToXterm);
}

std::string encodeLegacy(const KeyEvent& event, const KeyRow& row, const KeyboardModes& modes) {
  const Modifiers held = event.modifiers;
  switch (row.kind) {
    case KeyKind::Character:
      return encodeCharacter(event, row, modes);
    case KeyKind::Control:
      return encodeControl(event, row, modes);
    case KeyKind::Cursor: {
      const Introducer introducer = modes.applicationCursor ? Introducer::Ss3 : Introducer::Csi;
      return withLetter(row.legacyFinal, introducer, held, modes.modifyCursorKeys);
    }
    case KeyKind::Function:
      return withLetter(row.legacyFinal, Introducer::Ss3, held, modes.modifyFunctionKeys);
    case KeyKind::Numbered:
      return withNumber(row.legacyNumber, held, modes.modifyFunctionKeys);
    case KeyKind::Keypad:
      return encodeKeypad(event, row, modes);
    case KeyKind::Extra:
    case KeyKind::Modifier:
      break;
  }
  return {};
}

}  // namespace zolt::vt
