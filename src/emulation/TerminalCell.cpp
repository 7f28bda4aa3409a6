#include "emulation/TerminalCell.h"

std::size_t std::hash<zolt::TerminalColor>::operator()(const zolt::TerminalColor& color) const noexcept {
  // FNV-1a over the bytes fed.
  std::size_t value = 0xCBF29CE484222325ULL;
  const auto feed = [&value](std::uint8_t byte) { value = (value ^ byte) * 0x100000001B3ULL; };
  feed(static_cast<std::uint8_t>(color.kind()));
  if (color.kind() == zolt::TerminalColor::Case::Rgb) {
    feed(color.r());
    feed(color.g());
    feed(color.b());
  } else if (color.kind() == zolt::TerminalColor::Case::Indexed) {
    feed(color.index());
  }
  return value;
}
