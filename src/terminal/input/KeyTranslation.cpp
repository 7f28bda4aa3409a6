#include "terminal/input/KeyTranslation.h"

#include <QChar>
#include <QString>

#include "terminal/input/Keysyms.h"
#include "terminal/input/PcKeyboard.h"
#include "terminal/input/QtKeys.h"
#include "vt/input/InputText.h"

namespace zolt {

namespace {

using vt::Key;
using vt::KeyAction;
using vt::Modifier;
using vt::Modifiers;

struct ModifierRow {
  Qt::KeyboardModifier qtModifier;
  Modifier xkb;
  Modifier mac;
};

constexpr ModifierRow kModifiers[] = {
    {Qt::ShiftModifier, Modifier::Shift, Modifier::Shift},
    {Qt::AltModifier, Modifier::Alt, Modifier::Alt},
    {Qt::ControlModifier, Modifier::Control, Modifier::Super},
    {Qt::MetaModifier, Modifier::Super, Modifier::Control},
};

struct LockRow {
  KeyboardSystem system;
  quint32 nativeModifier;
  Modifier lock;
};

constexpr LockRow kNativeLocks[] = {
    {KeyboardSystem::Xkb, 1U << 1, Modifier::CapsLock},
    {KeyboardSystem::Xkb, 1U << 4, Modifier::NumLock},
    {KeyboardSystem::Mac, 1U << 16, Modifier::CapsLock},
};

KeyAction actionOf(const QKeyEvent& event, bool repeats) {
  if (event.type() == QEvent::KeyRelease) return KeyAction::Release;
  return repeats || event.isAutoRepeat() ? KeyAction::Repeat : KeyAction::Press;
}

bool isDead(const QKeyEvent& event) {
  return event.key() >= Qt::Key_Dead_Grave && event.key() <= Qt::Key_Dead_Longsolidusoverlay;
}

// What the event types, without control characters.
std::u32string plainText(const QKeyEvent& event) {
  return vt::plainScalars(event.text().toStdString());
}

// Qt's keys below its functional ones are characters, letters among them in upper case.
char32_t keyCharacter(const QKeyEvent& event) {
  constexpr int firstFunctional = 0x01000000;
  if (event.key() <= 0 || event.key() >= firstFunctional) return 0;
  const auto character = static_cast<char32_t>(event.key());
  return vt::isPlain(character) ? character : 0;
}

// The character of the key with Shift as it is. Cocoa gives the text with Option, and the key without.
char32_t typedCharacter(const QKeyEvent& event, const std::u32string& text, KeyboardSystem system) {
  const bool otherLayer = system == KeyboardSystem::Mac && event.modifiers().testFlag(Qt::AltModifier);
  if (text.size() == 1 && !otherLayer) return text.front();
  const char32_t character = system == KeyboardSystem::Xkb ? keysymCharacter(event.nativeVirtualKey()) : 0;
  return character != 0 ? character : keyCharacter(event);
}

struct Layers {
  char32_t character = 0;
  char32_t shifted = 0;
};

bool isDigit(char32_t character) {
  return character >= '0' && character <= '9';
}

// Both characters of a key, from the one that it types and its place on the keyboard.
Layers layersOf(char32_t typed, bool shift, const PcKey* place) {
  const Layers letters{.character = QChar::toLower(typed), .shifted = QChar::toUpper(typed)};
  if (letters.character != letters.shifted) return letters;
  if (place == nullptr) return {.character = typed, .shifted = shift ? typed : 0};
  const auto plain = static_cast<char32_t>(place->plain);
  const auto shifted = static_cast<char32_t>(place->shifted);
  if (!shift) return {.character = typed, .shifted = typed == plain ? shifted : 0};
  // In nearly all layouts the digit keys type a digit in one layer and a symbol in the other.
  const bool overDigit = isDigit(plain) && !isDigit(typed);
  return {.character = typed == shifted || overDigit ? plain : typed, .shifted = typed};
}

// Command acts as Alt, the key as well as the modifier.
void applyCommandIsMeta(vt::KeyEvent& event) {
  if (event.key == Key::LeftSuper) event.key = Key::LeftAlt;
  if (event.key == Key::RightSuper) event.key = Key::RightAlt;
  if (event.modifiers.hasAny(Modifier::Super))
    event.modifiers = event.modifiers.without(Modifier::Super) | Modifier::Alt;
}

void translateFunctional(vt::KeyEvent& event, const QKeyEvent& qtEvent) {
  const Modifiers own = modifierOf(event.key);
  event.modifiers = event.action == KeyAction::Release ? event.modifiers.without(own) : event.modifiers | own;
  if (qtEvent.key() == Qt::Key_Backtab) event.modifiers = event.modifiers | Modifier::Shift;
}

void translateCharacter(vt::KeyEvent& event, const QKeyEvent& qtEvent, std::u32string text,
                        const KeyTranslationOptions& options) {
  const PcKey* place = pcKeyOf(qtEvent, options.system);
  event.baseLayout = place == nullptr ? 0 : static_cast<char32_t>(place->plain);
  const char32_t typed = isDead(qtEvent) ? 0 : typedCharacter(qtEvent, text, options.system);
  const Layers layers = layersOf(typed, event.modifiers.hasAny(Modifier::Shift), place);
  event.character = layers.character;
  event.shifted = layers.shifted;

  if (event.modifiers.hasAny(Modifier::Alt)) {
    const bool isMac = options.system == KeyboardSystem::Mac;
    const bool isAlt = options.optionIsMeta || event.modifiers.hasAny(Modifier::Control | Modifier::Super) ||
                       (options.tellsModifiers && !isMac);
    if (!isAlt) {
      event.modifiers = event.modifiers.without(Modifier::Alt);
    } else if (isMac) {
      text.clear();  // that of the layout's other character
    }
  }
  event.text = vt::toUtf8(text);
}

}  // namespace

vt::Modifiers translateModifiers(Qt::KeyboardModifiers held, KeyboardSystem system) {
  Modifiers modifiers;
  for (const ModifierRow& row : kModifiers) {
    if (!held.testFlag(row.qtModifier)) continue;
    modifiers = modifiers | (system == KeyboardSystem::Mac ? row.mac : row.xkb);
  }
  return modifiers;
}

vt::Modifiers nativeLocks(const QKeyEvent& event, KeyboardSystem system) {
  Modifiers locks;
  for (const LockRow& row : kNativeLocks) {
    if (row.system == system && (event.nativeModifiers() & row.nativeModifier) != 0) locks = locks | row.lock;
  }
  return locks;
}

std::optional<vt::KeyEvent> translateKey(const QKeyEvent& event, const KeyTranslationOptions& options) {
  vt::KeyEvent translated;
  translated.action = actionOf(event, options.repeats);
  if (translated.action == KeyAction::Release && event.isAutoRepeat()) return std::nullopt;
  translated.modifiers = translateModifiers(event.modifiers(), options.system);
  if (options.capsLock) translated.modifiers = translated.modifiers | Modifier::CapsLock;
  if (options.numLock) translated.modifiers = translated.modifiers | Modifier::NumLock;

  const std::u32string text = plainText(event);
  if (const std::optional<Key> key = functionalKeyOf(event, options.system)) {
    translated.key = *key;
    translated.text = vt::toUtf8(text);
    translateFunctional(translated, event);
  } else {
    translateCharacter(translated, event, text, options);
    if (translated.character == 0 && text.empty() && !isDead(event)) return std::nullopt;
  }
  if (options.commandIsMeta) applyCommandIsMeta(translated);
  return translated;
}

}  // namespace zolt
