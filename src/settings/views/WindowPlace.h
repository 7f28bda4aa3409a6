#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>
#include <span>
#include <string>

namespace zolt {

/// The position of a window's top left corner as stored text: "120,80".
std::string placeText(QPoint place);
/// Parses it; nothing for any other text.
std::optional<QPoint> placeOf(const std::string& text);

/// The position at which a window of `size` that was left at `place` opens: entirely on the screen that shows the
/// largest part of it. `screens` are the screens' available areas. Nothing if no screen shows any of it because that
/// screen is gone.
std::optional<QPoint> placeOnScreens(QPoint place, QSize size, std::span<const QRect> screens);

}  // namespace zolt
