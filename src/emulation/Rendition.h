#pragma once

#include <cstdint>
#include <span>

#include "text/Color.h"
#include "text/TextAttributes.h"

namespace zolt {

/// The graphic rendition that SGR sequences change. The initial values are those after SGR 0.
struct Rendition {
  Color currentForeground = Color::white;
  Color currentBackground = Color::clear;
  bool isBold = false;
  bool isDim = false;
  bool isItalic = false;
  bool isUnderline = false;
  bool isReverse = false;
  bool isHidden = false;
  bool isStrikethrough = false;

  /// Applies the codes of one SGR sequence in order (ECMA-48 8.3.117; 38 and 48 as XTerm reads them).
  ///
  /// Codes without a meaning here are ignored. A 38 or 48 whose colour is incomplete or unknown is ignored alone, on
  /// purpose: the codes after it are read as ordinary ones, so that "38;2;255" turns on dim.
  void apply(std::span<const std::int64_t> codes);

  /// How text in this rendition looks. Reverse swaps first, before hidden and dim: with the default colours it yields
  /// clear text on white, deliberately.
  TextAttributes attributes() const;

  friend bool operator==(const Rendition&, const Rendition&) = default;
};

}  // namespace zolt
