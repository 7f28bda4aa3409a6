#include "settings/views/WindowPlace.h"

#include <algorithm>
#include <charconv>

namespace zolt {

std::string placeText(QPoint place) {
  return std::to_string(place.x()) + "," + std::to_string(place.y());
}

std::optional<QPoint> placeOf(const std::string& text) {
  const char* const end = text.data() + text.size();
  int x = 0;
  int y = 0;
  const auto first = std::from_chars(text.data(), end, x);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != ',') return std::nullopt;
  const auto second = std::from_chars(first.ptr + 1, end, y);
  if (second.ec != std::errc() || second.ptr != end) return std::nullopt;
  return QPoint(x, y);
}

std::optional<QPoint> placeOnScreens(QPoint place, QSize size, std::span<const QRect> screens) {
  const auto shown = [&](const QRect& screen) {
    // Farther out, QRect's own arithmetic would overflow.
    constexpr int kFar = 1'000'000;
    if (std::abs(static_cast<long long>(place.x())) > kFar || std::abs(static_cast<long long>(place.y())) > kFar) {
      return 0LL;
    }
    const QRect part = screen.intersected(QRect(place, size));
    return part.isEmpty() ? 0LL : 1LL * part.width() * part.height();
  };
  const auto screen = std::ranges::max_element(screens, {}, shown);
  if (screen == screens.end() || shown(*screen) == 0) return std::nullopt;
  // On a screen that is too small, keep the title bar visible.
  const int x = std::max(std::min(place.x(), screen->x() + screen->width() - size.width()), screen->x());
  const int y = std::max(std::min(place.y(), screen->y() + screen->height() - size.height()), screen->y());
  return QPoint(x, y);
}

}  // namespace zolt
