#pragma once

#include <cstdint>
#include <optional>

#include "text/Color.h"

namespace zolt {

enum class FontWeight : std::uint8_t { Regular, Bold };
enum class FontSlant : std::uint8_t { Upright, Italic };
enum class Line : std::uint8_t { None, Single };

/// A face of the fixed-pitch system font.
struct FontFace {
  double size = 14;  ///< logical pixels
  FontWeight weight = FontWeight::Regular;
  FontSlant slant = FontSlant::Upright;

  friend bool operator==(const FontFace&, const FontFace&) = default;
};

/// The style of a run of text. A run without a background lets the view's own background show through.
struct TextAttributes {
  FontFace font;
  Color foreground = Color::white;
  std::optional<Color> background;
  Line underline = Line::None;
  Line strikethrough = Line::None;

  friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

}  // namespace zolt
