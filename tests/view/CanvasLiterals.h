#pragma once

#include <ostream>

#include "view/canvas/CanvasCell.h"
#include "view/canvas/CanvasPixels.h"
#include "view/canvas/CanvasPosition.h"

namespace zolt {

inline namespace literals {

constexpr DevicePixels operator""_px(unsigned long long pixels) {
  return DevicePixels(pixels);
}
constexpr CanvasPosition operator""_pos(unsigned long long characters) {
  return CanvasPosition(characters);
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
inline std::ostream& operator<<(std::ostream& out, CanvasPosition position) {
  return out << "position " << position.value;
}
inline std::ostream& operator<<(std::ostream& out, CanvasRow row) {
  return out << "row " << row.value;
}
inline std::ostream& operator<<(std::ostream& out, CanvasColumn column) {
  return out << "column " << column.value;
}

}  // namespace zolt
