#pragma once

#include <QWidget>

namespace zolt {

/// Gives a window an alpha channel, so that the desktop can show through what is painted translucent; does nothing if
/// it has one. A window on screen is made anew, which it shows for a moment. Main thread.
void makeTranslucent(QWidget& window);

}  // namespace zolt
