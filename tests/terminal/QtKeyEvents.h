#pragma once

#include <QKeyEvent>
#include <QString>
#include <cstdint>
#include <string>

#include "terminal/input/KeyTranslation.h"

namespace zolt::test {

/// What Qt reports for a key press.
struct QtPress {
  int key = Qt::Key_unknown;
  Qt::KeyboardModifiers modifiers{};
  std::u16string text{};
  std::uint32_t scanCode = 0;
  std::uint32_t virtualKey = 0;
};

inline QKeyEvent pressed(const QtPress& press, QEvent::Type type = QEvent::KeyPress, bool isRepeat = false) {
  return {
      type,    press.key, press.modifiers, press.scanCode, press.virtualKey, 0, QString::fromStdU16String(press.text),
      isRepeat};
}

constexpr KeyTranslationOptions kXkb{.optionIsMeta = true, .system = KeyboardSystem::Xkb};
constexpr KeyTranslationOptions kMac{.system = KeyboardSystem::Mac};

}  // namespace zolt::test
