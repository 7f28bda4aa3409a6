#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>
#include <span>
#include <string>

namespace zolt {

/// The position of a window's top left corner as it is stored: "120,80".
std::string placeText(QPoint place);
/// Reads it back; nothing for any other text.
std::optional<QPoint> placeOf(const std::string& text);

/// Where a window of `size` that was left at `place` opens: moved entirely onto the screen that shows the largest part
/// of it. `screens` are their available areas. Nothing if no screen shows any of it: that screen is gone.
std::optional<QPoint> placeOnScreens(QPoint place, QSize size, std::span<const QRect> screens);

}  // namespace zolt
