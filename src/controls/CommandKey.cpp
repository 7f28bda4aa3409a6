#include "controls/CommandKey.h"

namespace zolt {

QList<QKeySequence> commandShortcuts(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  const auto sequence = [key](Qt::KeyboardModifiers held) { return QKeySequence(QKeyCombination(held, key)); };
#ifdef Q_OS_MACOS
  return {sequence(Qt::ControlModifier | modifiers)};  // Qt calls the Command key Ctrl there
#else
  return {sequence(Qt::ControlModifier | Qt::ShiftModifier | modifiers), sequence(Qt::MetaModifier | modifiers)};
#endif
}

}  // namespace zolt
