#pragma once

namespace zolt {

/// A device-independent RGB colour with alpha.
///
/// Components are nominally in 0...1 (ends included) and are not clamped: a program may ask for more than 1.0, and only
/// painting clamps. Equality is by component.
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 0;

  /// An opaque grey; `level` 0 is black and 1 is white.
  static constexpr Color gray(double level) { return {level, level, level, 1.0}; }

  constexpr Color withAlpha(double newAlpha) const { return {red, green, blue, newAlpha}; }

  friend constexpr bool operator==(const Color&, const Color&) = default;

  static const Color white;
  static const Color black;
  /// Fully transparent: what is behind shows through.
  static const Color clear;
};

inline constexpr Color Color::white{1.0, 1.0, 1.0, 1.0};
inline constexpr Color Color::black{0.0, 0.0, 0.0, 1.0};
inline constexpr Color Color::clear{0.0, 0.0, 0.0, 0.0};

}  // namespace zolt
