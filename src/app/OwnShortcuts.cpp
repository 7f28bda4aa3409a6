#include "app/OwnShortcuts.h"

#include <algorithm>

namespace zolt {

namespace {

constexpr const char* kNone = "none";

}  // namespace

std::string shortcutKey(const MenuItem& item) {
  return std::string("shortcut.") + item.name;
}

QList<QKeySequence> shortcutsOf(const MenuItem& item, const UserDefaults& defaults) {
  const auto stored = defaults.stringForKey(shortcutKey(item));
  if (!stored) return item.shortcuts();
  if (*stored == kNone) return {};
  const auto own = QKeySequence::fromString(QString::fromStdString(*stored), QKeySequence::PortableText);
  return canBeShortcut(own) ? QList{own} : item.shortcuts();
}

void setShortcut(const MenuItem& item, const std::optional<QKeySequence>& shortcut, UserDefaults& defaults) {
  const std::string key = shortcutKey(item);
  if (!shortcut) return defaults.removeObject(key);
  const QString text = shortcut->toString(QKeySequence::PortableText);
  defaults.setString(key, shortcut->isEmpty() ? kNone : text.toStdString());
}

const MenuItem* otherItemWith(const QKeySequence& shortcut, const MenuItem& item, const UserDefaults& defaults) {
  const std::span<const MenuItem> items = menuItems();
  const auto found = std::ranges::find_if(items, [&](const MenuItem& each) {
    return &each != &item && isIn(each, Display::FullEmulation) && shortcutsOf(each, defaults).contains(shortcut);
  });
  return found == items.end() ? nullptr : &*found;
}

bool canBeShortcut(const QKeySequence& keys) {
  if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown) return false;
  const bool isFunctionKey = keys[0].key() >= Qt::Key_F1 && keys[0].key() <= Qt::Key_F35;
  constexpr Qt::KeyboardModifiers kCommanding = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
  return isFunctionKey || (keys[0].keyboardModifiers() & kCommanding) != 0;
}

}  // namespace zolt
