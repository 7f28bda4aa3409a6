#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace zolt {

/// Asks over the window of `over` whether a link of an unusual kind shall be opened; calls `open` if so. `target` is
/// shown as it is. Returns at once. Main thread.
void askBeforeLink(QWidget& over, const QString& target, std::function<void()> open);
/// Says that a link is not opened.
void tellRefusedLink(QWidget& over, const QString& target);

}  // namespace zolt
