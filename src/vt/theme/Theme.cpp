#include "vt/theme/Theme.h"

namespace zolt::vt {

namespace {

// Equal hues in both themes, and equal contrast for colours of equal rank, chosen in OKLCH. On the dark background the
// hues have about 6.4 to 1, the bright ones 9.8; on the light background 6, the bright ones 4.7 but more chroma. As
// backgrounds, those of the dark theme take black text and those of the light theme white text.
constexpr Theme kDark{
    .name = "Dark",
    .foreground = {0xD5, 0xD9, 0xE1},
    .background = {0x19, 0x1C, 0x22},
    .cursor = {0xA4, 0xD9, 0xF9},
    .selectionBackground = {0x29, 0x39, 0x56},
    .selectionText = std::nullopt,
    .ansi = {{
        {0x2E, 0x32, 0x39},  // black
        {0xEE, 0x7D, 0x7E},  // red
        {0x5A, 0xB1, 0x63},  // green
        {0xC7, 0x97, 0x14},  // yellow
        {0x60, 0xA1, 0xF4},  // blue
        {0xCC, 0x84, 0xD7},  // magenta
        {0x08, 0xB0, 0xB6},  // cyan
        {0xC1, 0xC5, 0xCD},  // white
        {0x5D, 0x62, 0x6C},  // bright black
        {0xFE, 0xB0, 0xAF},  // bright red
        {0x8C, 0xD5, 0x91},  // bright green
        {0xE8, 0xBF, 0x63},  // bright yellow
        {0x9D, 0xC7, 0xFE},  // bright blue
        {0xEE, 0xAE, 0xF7},  // bright magenta
        {0x47, 0xD7, 0xDE},  // bright cyan
        {0xF5, 0xF8, 0xFC},  // bright white
    }},
};

constexpr Theme kLight{
    .name = "Light",
    .foreground = {0x28, 0x2B, 0x33},
    .background = {0xFB, 0xFA, 0xF7},
    .cursor = {0x28, 0x63, 0xAB},
    .selectionBackground = {0xC3, 0xDC, 0xF6},
    .selectionText = std::nullopt,
    .ansi = {{
        {0x21, 0x23, 0x29},  // black
        {0xB1, 0x26, 0x32},  // red
        {0x29, 0x6D, 0x32},  // green
        {0x7F, 0x5B, 0x04},  // yellow
        {0x02, 0x58, 0xB2},  // blue
        {0x8B, 0x38, 0x93},  // magenta
        {0x04, 0x6B, 0x70},  // cyan
        {0xCB, 0xC9, 0xC6},  // white
        {0x59, 0x5C, 0x65},  // bright black
        {0xD2, 0x2D, 0x3D},  // bright red
        {0x1D, 0x83, 0x31},  // bright green
        {0x97, 0x68, 0x01},  // bright yellow
        {0x16, 0x6E, 0xD4},  // bright blue
        {0xAD, 0x41, 0xB8},  // bright magenta
        {0x04, 0x7E, 0x89},  // bright cyan
        {0xDD, 0xDA, 0xD6},  // bright white
    }},
};

}  // namespace

const Theme& darkTheme() {
  return kDark;
}

const Theme& lightTheme() {
  return kLight;
}

void applyTheme(Palette& palette, const Theme& theme) {
  palette.setRoleDefault(Palette::Role::Foreground, theme.foreground);
  palette.setRoleDefault(Palette::Role::Background, theme.background);
  palette.setRoleDefault(Palette::Role::Cursor, theme.cursor);
  for (std::size_t i = 0; i < theme.ansi.size(); ++i) {
    palette.setIndexedDefault(static_cast<std::uint8_t>(i), theme.ansi[i]);
  }
}

}  // namespace zolt::vt
