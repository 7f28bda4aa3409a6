#pragma once

#include <QRgb>
#include <cstdint>

#include "text/TextAttributes.h"

namespace zolt {

enum class LineStyle : std::uint8_t { None, Single, Double, Curly, Dotted, Dashed };

/// How a character cell is painted, all colours resolved. A value.
struct CellLook {
  QRgb foreground = 0xFFFFFFFF;  ///< with alpha; wholly transparent text is not painted
  QRgb background = 0;           ///< wholly transparent: the canvas's own
  QRgb underlineColor = 0;       ///< wholly transparent: the foreground
  FontWeight weight = FontWeight::Regular;
  FontSlant slant = FontSlant::Upright;
  LineStyle underline = LineStyle::None;
  bool struck = false;
  bool overlined = false;
  bool blinks = false;

  friend bool operator==(const CellLook&, const CellLook&) = default;
};

}  // namespace zolt
