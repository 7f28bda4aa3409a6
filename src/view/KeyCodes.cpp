#include "view/KeyCodes.h"

#include <algorithm>
#include <array>

namespace zolt {

namespace {

struct KeyRow {
  int qtKey;
  KeyCode code;
};

constexpr std::array kKeys{
    KeyRow{Qt::Key_Return, KeyCode::Return},
    KeyRow{Qt::Key_Tab, KeyCode::Tab},
    KeyRow{Qt::Key_Backtab, KeyCode::Tab},  // Shift+Tab: modifiers are ignored
    KeyRow{Qt::Key_Backspace, KeyCode::Delete},
    KeyRow{Qt::Key_Escape, KeyCode::Escape},
    KeyRow{Qt::Key_Home, KeyCode::Home},
    KeyRow{Qt::Key_PageUp, KeyCode::PageUp},
    KeyRow{Qt::Key_Delete, KeyCode::ForwardDelete},
    KeyRow{Qt::Key_End, KeyCode::End},
    KeyRow{Qt::Key_PageDown, KeyCode::PageDown},
    KeyRow{Qt::Key_Left, KeyCode::LeftArrow},
    KeyRow{Qt::Key_Right, KeyCode::RightArrow},
    KeyRow{Qt::Key_Down, KeyCode::DownArrow},
    KeyRow{Qt::Key_Up, KeyCode::UpArrow},
};

bool isOnKeypad(const QKeyEvent& event) {
#ifdef Q_OS_MACOS
  // Qt marks the arrow keys as keypad keys there.
  return event.modifiers().testFlag(Qt::KeypadModifier) && (event.key() < Qt::Key_Left || event.key() > Qt::Key_Down);
#else
  return event.modifiers().testFlag(Qt::KeypadModifier);
#endif
}

}  // namespace

std::optional<KeyCode> keyCodeOf(const QKeyEvent& event) {
  if (isOnKeypad(event)) return std::nullopt;
  const auto* row = std::ranges::find(kKeys, event.key(), &KeyRow::qtKey);
  return row == kKeys.end() ? std::nullopt : std::optional(row->code);
}

bool hasControl(const QKeyEvent& event) {
#ifdef Q_OS_MACOS
  return event.modifiers().testFlag(Qt::MetaModifier);
#else
  return event.modifiers().testFlag(Qt::ControlModifier);
#endif
}

QString charactersIgnoringModifiers(const QKeyEvent& event) {
  const int key = event.key();
  switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return QStringLiteral("\t");
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return QStringLiteral("\r");
    case Qt::Key_Escape:
      return QStringLiteral("\x1B");
    case Qt::Key_Backspace:
      return QStringLiteral("\b");
    case Qt::Key_Delete:
      return QStringLiteral("\x7F");
    default:
      break;
  }
  // Below this, Qt's key codes are Unicode code points (letters in upper case); above it, keys have no character.
  if (key < 0x20 || key >= 0x01000000) return {};
  const char32_t symbol = static_cast<char32_t>(key);
  const QString characters = QString::fromUcs4(&symbol, 1);
  return event.modifiers().testFlag(Qt::ShiftModifier) ? characters : characters.toLower();
}

}  // namespace zolt
