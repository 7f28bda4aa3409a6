#pragma once

#include <compare>
#include <concepts>
#include <cstdint>

namespace zolt {

/// A length in device pixels, the ones that a screen has; or a coordinate, from the top or left of what its name says.
struct DevicePixels {
  std::int64_t value = 0;

  constexpr DevicePixels() = default;
  /// Whole pixels: how a fraction is rounded is up to the caller.
  constexpr explicit DevicePixels(std::integral auto pixels) : value(static_cast<std::int64_t>(pixels)) {}

  /// For Qt's geometry; only for lengths within a window, since those of a text do not fit an `int`.
  constexpr int toInt() const { return static_cast<int>(value); }
  constexpr double toDouble() const { return static_cast<double>(value); }

  friend constexpr auto operator<=>(const DevicePixels&, const DevicePixels&) = default;
  friend constexpr DevicePixels operator-(DevicePixels a) { return DevicePixels(-a.value); }
  friend constexpr DevicePixels operator+(DevicePixels a, DevicePixels b) { return DevicePixels(a.value + b.value); }
  friend constexpr DevicePixels operator-(DevicePixels a, DevicePixels b) { return DevicePixels(a.value - b.value); }
  friend constexpr DevicePixels operator*(DevicePixels a, std::integral auto times) {
    return DevicePixels(a.value * static_cast<std::int64_t>(times));
  }
  friend constexpr DevicePixels operator*(std::integral auto times, DevicePixels a) { return a * times; }
  friend constexpr DevicePixels operator/(DevicePixels a, std::integral auto parts) {
    return DevicePixels(a.value / static_cast<std::int64_t>(parts));
  }
  /// How many times `b` fits into `a`, rounded towards 0.
  friend constexpr std::int64_t operator/(DevicePixels a, DevicePixels b) { return a.value / b.value; }
};

/// A point in device pixels, from the top left of the viewport.
struct DevicePoint {
  DevicePixels x;
  DevicePixels y;
};

/// A length or coordinate in logical pixels, as Qt's widgets and events count; `TextCanvas::toDevice` makes device
/// pixels of it.
struct LogicalPixels {
  double value = 0;

  constexpr LogicalPixels() = default;
  constexpr explicit LogicalPixels(double pixels) : value(pixels) {}
};

}  // namespace zolt
