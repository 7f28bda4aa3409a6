#include "emulation/Rendition.h"

#include <array>

#include "emulation/SGR.h"

namespace zolt {

namespace {

enum Flag : std::uint8_t {
  kBold = 1,
  kDim = 2,
  kItalic = 4,
  kUnderline = 8,
  kReverse = 16,
  kHidden = 32,
  kStrikethrough = 64,
};

struct FlagChange {
  std::uint8_t set = 0;
  std::uint8_t clear = 0;
};

// By code, from 1 to 29. Colours and the reset are handled beside the table.
constexpr std::array kFlagChanges = [] {
  std::array<FlagChange, 30> changes{};
  changes[1].set = kBold;
  changes[2].set = kDim;
  changes[3].set = kItalic;
  changes[4].set = kUnderline;
  changes[7].set = kReverse;
  changes[8].set = kHidden;
  changes[9].set = kStrikethrough;
  changes[22].clear = kBold | kDim;
  changes[23].clear = kItalic;
  changes[24].clear = kUnderline;
  changes[27].clear = kReverse;
  changes[28].clear = kHidden;
  changes[29].clear = kStrikethrough;
  return changes;
}();

// The 256-colour palette.
const std::array<CompactColor, 256>& compactPalette() {
  static const std::array palette = [] {
    std::array<CompactColor, 256> colors;
    for (std::size_t i = 0; i < colors.size(); ++i) {
      colors[i] = CompactColor::of(color256(static_cast<std::int64_t>(i))).value();
    }
    return colors;
  }();
  return palette;
}

// Whether `code` is one of the eight from `first` on.
bool isOfEight(std::int64_t code, std::int64_t first) {
  return code >= first && code < first + 8;
}

CompactColor named(std::int64_t index) {
  return compactPalette()[static_cast<std::size_t>(index)];
}

bool isByte(std::int64_t code) {
  return code >= 0 && code <= 255;
}

}  // namespace

void Rendition::setExact(Role role, const Color& exact) {
  m_exact[role] = exact;
  color(role).kind = ColorKind::Exact;
}

std::size_t Rendition::setExtendedColor(Role role, std::span<const std::int64_t> codes) {
  if (codes.size() >= 2 && codes[0] == 5) {
    if (isByte(codes[1])) {
      color(role) = compact(named(codes[1]));
    } else {
      setExact(role, color256(codes[1]));
    }
    return 2;
  }
  if (codes.size() >= 4 && codes[0] == 2) {
    if (isByte(codes[1]) && isByte(codes[2]) && isByte(codes[3])) {
      color(role) = compact(CompactColor(static_cast<std::uint8_t>(codes[1]), static_cast<std::uint8_t>(codes[2]),
                                         static_cast<std::uint8_t>(codes[3])));
    } else {
      const auto component = [](std::int64_t code) { return static_cast<double>(code) / 255.0; };
      setExact(role, {component(codes[1]), component(codes[2]), component(codes[3]), 1.0});
    }
    return 4;
  }
  return 0;
}

void Rendition::apply(std::span<const std::int64_t> codes) {
  constexpr std::int64_t kToBright = 60;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const std::int64_t code = codes[i];
    if (code == 0) {
      color(Foreground) = compact(kWhite);
      color(Background) = {};
      m_flags = 0;
    } else if (code > 0 && code < std::ssize(kFlagChanges)) {
      const FlagChange change = kFlagChanges[static_cast<std::size_t>(code)];
      m_flags = static_cast<std::uint8_t>((m_flags & ~change.clear) | change.set);
    } else if (code == 38 || code == 48) {
      i += setExtendedColor(code == 38 ? Foreground : Background, codes.subspan(i + 1));
    } else if (code == 39) {
      color(Foreground) = compact(kWhite);
    } else if (code == 49) {
      color(Background) = {};
    } else if (isOfEight(code, 30)) {
      color(Foreground) = compact(named(code - 30));
    } else if (isOfEight(code, 40)) {
      color(Background) = compact(named(code - 40));
    } else if (isOfEight(code, 30 + kToBright)) {
      color(Foreground) = compact(named(code - 30 - kToBright + 8));
    } else if (isOfEight(code, 40 + kToBright)) {
      color(Background) = compact(named(code - 40 - kToBright + 8));
    }
  }
}

Rendition::Role Rendition::shown(Role role) const {
  return has(kReverse) == (role == Foreground) ? Background : Foreground;
}

StyleCode Rendition::styleCode() const {
  const RenditionColor& foreground = color(shown(Foreground));
  const RenditionColor& background = color(shown(Background));
  StyleCode::Parts parts{.foreground = CompactColor(),
                         .opacity = StyleCode::Opacity::Clear,
                         .isBold = has(kBold),
                         .isItalic = has(kItalic),
                         .isUnderlined = has(kUnderline),
                         .isStruck = has(kStrikethrough)};
  if (!has(kHidden)) {
    parts.foreground = foreground.compact;
    if (foreground.kind == ColorKind::Compact) parts.opacity = StyleCode::Opacity::Opaque;
    if (has(kDim)) parts.opacity = StyleCode::Opacity::Half;
  }
  parts.background = background.compact;
  parts.hasBackground = background.kind == ColorKind::Compact;
  return StyleCode(parts);
}

Color Rendition::exactColor(Role role) const {
  switch (color(role).kind) {
    case ColorKind::Compact:
      return color(role).compact.color();
    case ColorKind::Exact:
      return m_exact[role];
    case ColorKind::Clear:
      break;
  }
  return Color::clear;
}

TextAttributes Rendition::attributes() const {
  TextAttributes attributes;
  attributes.font.weight = has(kBold) ? FontWeight::Bold : FontWeight::Regular;
  attributes.font.slant = has(kItalic) ? FontSlant::Italic : FontSlant::Upright;
  attributes.foreground = exactColor(shown(Foreground));
  if (has(kHidden)) {
    attributes.foreground = Color::clear;
  } else if (has(kDim)) {
    attributes.foreground = attributes.foreground.withAlpha(0.5);
  }
  const Color background = exactColor(shown(Background));
  if (background != Color::clear) attributes.background = background;
  attributes.underline = has(kUnderline) ? Line::Single : Line::None;
  attributes.strikethrough = has(kStrikethrough) ? Line::Single : Line::None;
  return attributes;
}

}  // namespace zolt
