#pragma once

#include <QRgb>
#include <cstdint>

#include "canvas/CanvasCell.h"

namespace zolt {

enum class CursorLook : std::uint8_t { Block, HollowBlock, Underline, Bar };

/// The cursor of a text: where the program will write next.
struct CanvasCursor {
  CanvasRow row{};
  ColumnRange columns{};  ///< one, or the two of a wide character
  CursorLook look = CursorLook::Block;
  QRgb color = 0xFFFFFFFF;
  QRgb text = 0xFF000000;  ///< of the character under a block
  bool isShown = true;     ///< false while the program hides it; input methods still need its place
  bool blinks = false;

  friend bool operator==(const CanvasCursor&, const CanvasCursor&) = default;
};

}  // namespace zolt
