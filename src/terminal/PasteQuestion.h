#pragma once

#include <QWidget>
#include <functional>

#include "terminal/input/PasteCheck.h"

namespace zolt {

/// Asks over the window of `over` whether a text shall be pasted, with its beginning shown; calls `paste` if so.
/// Returns at once; does nothing while the question is already open. Main thread.
void askBeforePaste(QWidget& over, const PasteCheck& check, std::function<void()> paste);

}  // namespace zolt
