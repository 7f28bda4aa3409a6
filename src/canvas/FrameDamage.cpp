#include "canvas/FrameDamage.h"

#include <algorithm>
#include <optional>

namespace zolt {

namespace {

// How many rows the first row of `after` that is found in `before` has moved.
std::optional<std::ptrdiff_t> rowsMoved(const Frame& before, const Frame& after) {
  for (std::size_t i = 0; i < after.rows.size(); ++i) {
    const auto found = std::ranges::find_if(
        before.rows, [&](const RowKey& key) { return key.content.identity == after.rows[i].content.identity; });
    if (found != before.rows.end()) return (found - before.rows.begin()) - static_cast<std::ptrdiff_t>(i);
  }
  return std::nullopt;
}

}  // namespace

FrameDamage compareFrames(const Frame& before, const Frame& after, DevicePixels viewportHeight) {
  FrameDamage damage;
  const auto moved = rowsMoved(before, after);
  if (!moved || before.rowHeight != after.rowHeight) {
    damage.everything = true;
    return damage;
  }
  damage.shift = after.firstRowTop - before.firstRowTop - *moved * after.rowHeight;
  if (std::max(damage.shift, -damage.shift) >= viewportHeight) {
    damage.everything = true;
    return damage;
  }
  const auto isWholeAt = [&](DevicePixels top) {
    return top >= DevicePixels(0) && top + after.rowHeight <= viewportHeight;
  };
  for (std::size_t i = 0; i < after.rows.size(); ++i) {
    const std::ptrdiff_t source = static_cast<std::ptrdiff_t>(i) + *moved;
    const DevicePixels top = after.topOf(i);
    // A row that was partly outside the viewport before the move has pixels that were never painted.
    const bool wasWhole = isWholeAt(top - damage.shift);
    const bool same = source >= 0 && source < std::ssize(before.rows) &&
                      before.rows[static_cast<std::size_t>(source)] == after.rows[i];
    if (!same || (!wasWhole && damage.shift != DevicePixels(0))) damage.dirtyRows.push_back(i);
  }
  // The area below the last row is still blank only if the previous frame had no more rows.
  if (before.rows.size() > after.rows.size() + static_cast<std::size_t>(std::max<std::ptrdiff_t>(*moved, 0))) {
    damage.everything = true;
  }
  return damage;
}

}  // namespace zolt
