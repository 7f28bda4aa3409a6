#pragma once

#include <cstdint>

namespace zolt {

enum class Stroke : std::uint8_t { None, Light, Heavy, Double };
enum class BoxStyle : std::uint8_t { Solid, TwoDashes, ThreeDashes, FourDashes, Arc };

/// What runs from the middle of the cell to its edges.
struct BoxLines {
  Stroke up;
  Stroke right;
  Stroke down;
  Stroke left;
  BoxStyle style = BoxStyle::Solid;
};

namespace box_table {

constexpr Stroke o = Stroke::None;
constexpr Stroke l = Stroke::Light;
constexpr Stroke h = Stroke::Heavy;
constexpr Stroke d = Stroke::Double;
constexpr BoxStyle Dash2 = BoxStyle::TwoDashes;
constexpr BoxStyle Dash3 = BoxStyle::ThreeDashes;
constexpr BoxStyle Dash4 = BoxStyle::FourDashes;
constexpr BoxStyle Arc = BoxStyle::Arc;

// U+2500 to U+257F, by their names; the three diagonals have no such lines.
// clang-format off
constexpr BoxLines kRows[] = {
    {o, l, o, l}, {o, h, o, h}, {l, o, l, o}, {h, o, h, o},  // ─ ━ │ ┃
    {o, l, o, l, Dash3}, {o, h, o, h, Dash3}, {l, o, l, o, Dash3}, {h, o, h, o, Dash3},  // ┄ ┅ ┆ ┇
    {o, l, o, l, Dash4}, {o, h, o, h, Dash4}, {l, o, l, o, Dash4}, {h, o, h, o, Dash4},  // ┈ ┉ ┊ ┋
    {o, l, l, o}, {o, h, l, o}, {o, l, h, o}, {o, h, h, o},  // ┌ ┍ ┎ ┏
    {o, o, l, l}, {o, o, l, h}, {o, o, h, l}, {o, o, h, h},  // ┐ ┑ ┒ ┓
    {l, l, o, o}, {l, h, o, o}, {h, l, o, o}, {h, h, o, o},  // └ ┕ ┖ ┗
    {l, o, o, l}, {l, o, o, h}, {h, o, o, l}, {h, o, o, h},  // ┘ ┙ ┚ ┛
    {l, l, l, o}, {l, h, l, o}, {h, l, l, o}, {l, l, h, o},  // ├ ┝ ┞ ┟
    {h, l, h, o}, {h, h, l, o}, {l, h, h, o}, {h, h, h, o},  // ┠ ┡ ┢ ┣
    {l, o, l, l}, {l, o, l, h}, {h, o, l, l}, {l, o, h, l},  // ┤ ┥ ┦ ┧
    {h, o, h, l}, {h, o, l, h}, {l, o, h, h}, {h, o, h, h},  // ┨ ┩ ┪ ┫
    {o, l, l, l}, {o, l, l, h}, {o, h, l, l}, {o, h, l, h},  // ┬ ┭ ┮ ┯
    {o, l, h, l}, {o, l, h, h}, {o, h, h, l}, {o, h, h, h},  // ┰ ┱ ┲ ┳
    {l, l, o, l}, {l, l, o, h}, {l, h, o, l}, {l, h, o, h},  // ┴ ┵ ┶ ┷
    {h, l, o, l}, {h, l, o, h}, {h, h, o, l}, {h, h, o, h},  // ┸ ┹ ┺ ┻
    {l, l, l, l}, {l, l, l, h}, {l, h, l, l}, {l, h, l, h},  // ┼ ┽ ┾ ┿
    {h, l, l, l}, {l, l, h, l}, {h, l, h, l}, {h, l, l, h},  // ╀ ╁ ╂ ╃
    {h, h, l, l}, {l, l, h, h}, {l, h, h, l}, {h, h, l, h},  // ╄ ╅ ╆ ╇
    {l, h, h, h}, {h, l, h, h}, {h, h, h, l}, {h, h, h, h},  // ╈ ╉ ╊ ╋
    {o, l, o, l, Dash2}, {o, h, o, h, Dash2}, {l, o, l, o, Dash2}, {h, o, h, o, Dash2},  // ╌ ╍ ╎ ╏
    {o, d, o, d}, {d, o, d, o}, {o, d, l, o}, {o, l, d, o},  // ═ ║ ╒ ╓
    {o, d, d, o}, {o, o, l, d}, {o, o, d, l}, {o, o, d, d},  // ╔ ╕ ╖ ╗
    {l, d, o, o}, {d, l, o, o}, {d, d, o, o}, {l, o, o, d},  // ╘ ╙ ╚ ╛
    {d, o, o, l}, {d, o, o, d}, {l, d, l, o}, {d, l, d, o},  // ╜ ╝ ╞ ╟
    {d, d, d, o}, {l, o, l, d}, {d, o, d, l}, {d, o, d, d},  // ╠ ╡ ╢ ╣
    {o, d, l, d}, {o, l, d, l}, {o, d, d, d}, {l, d, o, d},  // ╤ ╥ ╦ ╧
    {d, l, o, l}, {d, d, o, d}, {l, d, l, d}, {d, l, d, l},  // ╨ ╩ ╪ ╫
    {d, d, d, d}, {o, l, l, o, Arc}, {o, o, l, l, Arc}, {l, o, o, l, Arc},  // ╬ ╭ ╮ ╯
    {l, l, o, o, Arc}, {o, o, o, o}, {o, o, o, o}, {o, o, o, o},  // ╰ ╱ ╲ ╳
    {o, o, o, l}, {l, o, o, o}, {o, l, o, o}, {o, o, l, o},  // ╴ ╵ ╶ ╷
    {o, o, o, h}, {h, o, o, o}, {o, h, o, o}, {o, o, h, o},  // ╸ ╹ ╺ ╻
    {o, h, o, l}, {l, o, h, o}, {o, l, o, h}, {h, o, l, o},  // ╼ ╽ ╾ ╿
};
// clang-format on

}  // namespace box_table

constexpr char32_t kFirstBoxSymbol = 0x2500;

}  // namespace zolt
