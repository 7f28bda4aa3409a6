#pragma once

#include <ostream>

#include "support/TextPositions.h"
#include "canvas/CanvasCell.h"
#include "canvas/CanvasPixels.h"

namespace zolt {

inline namespace literals {

constexpr DevicePixels operator""_px(unsigned long long pixels) {
  return DevicePixels(pixels);
}
constexpr CanvasRow operator""_row(unsigned long long row) {
  return CanvasRow(static_cast<std::int64_t>(row));
}
constexpr CanvasColumn operator""_col(unsigned long long column) {
  return CanvasColumn(static_cast<int>(column));
}

}  // namespace literals

inline std::ostream& operator<<(std::ostream& out, DevicePixels pixels) {
  return out << pixels.value << " px";
}
inline std::ostream& operator<<(std::ostream& out, CanvasRow row) {
  return out << "row " << row.value;
}
inline std::ostream& operator<<(std::ostream& out, CanvasColumn column) {
  return out << "column " << column.value;
}

}  // namespace zolt
