#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zolt::vt {

/// A colour with 8 bits per component.
struct Rgb {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;

  friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// Parses a colour in XParseColor's notation: "#rgb" with 1 to 4 digits per component, or "rgb:r/g/b".
std::optional<Rgb> parseColor(std::string_view text);
/// The notation used in reports: "rgb:rrrr/gggg/bbbb".
std::string colorReport(const Rgb& color);

/// The 256 indexed colours and the default colours of a terminal. The theme provides the defaults; programs can change
/// and reset them.
class Palette {
 public:
  enum class Role : std::uint8_t { Foreground, Background, Cursor };
  static constexpr std::size_t indexedColors = 256;

  /// White on black, with xterm's 16 colours, colour cube and grey ramp.
  Palette();

  const Rgb& indexed(std::uint8_t index) const { return m_indexed[index]; }
  const Rgb& role(Role role) const { return m_roles[static_cast<std::size_t>(role)]; }
  void setIndexed(std::uint8_t index, const Rgb& color) { m_indexed[index] = color; }
  void setRole(Role role, const Rgb& color) { m_roles[static_cast<std::size_t>(role)] = color; }
  void resetIndexed(std::uint8_t index) { m_indexed[index] = m_indexedDefaults[index]; }
  void resetRole(Role role) { setRole(role, m_roleDefaults[static_cast<std::size_t>(role)]); }
  void reset();

  friend bool operator==(const Palette&, const Palette&) = default;

  /// Set the theme's colours, which take effect unless the program has changed them.
  void setIndexedDefault(std::uint8_t index, const Rgb& color);
  void setRoleDefault(Role role, const Rgb& color);

 private:
  friend struct SavedFields;

  std::array<Rgb, indexedColors> m_indexedDefaults;
  std::array<Rgb, 3> m_roleDefaults;
  std::array<Rgb, indexedColors> m_indexed;
  std::array<Rgb, 3> m_roles;
};

}  // namespace zolt::vt
