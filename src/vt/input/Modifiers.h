#pragma once

#include <cstdint>

namespace zolt::vt {

/// A modifier or a lock. The bits are those of the kitty keyboard protocol
/// (https://sw.kovidgoyal.net/kitty/keyboard-protocol/#modifiers), the first three of which are also xterm's.
enum class Modifier : std::uint8_t {
  Shift = 1,
  Alt = 2,
  Control = 4,
  Super = 8,
  Hyper = 16,
  Meta = 32,
  CapsLock = 64,
  NumLock = 128,
};

/// A set of modifiers. A value.
class Modifiers {
 public:
  constexpr Modifiers() = default;
  constexpr Modifiers(Modifier one) : m_bits(static_cast<std::uint8_t>(one)) {}
  static constexpr Modifiers fromBits(std::uint8_t bits) { return Modifiers(bits); }

  constexpr std::uint8_t bits() const { return m_bits; }
  constexpr bool isEmpty() const { return m_bits == 0; }
  /// Whether any of `others` is in the set.
  constexpr bool hasAny(Modifiers others) const { return (m_bits & others.m_bits) != 0; }
  constexpr Modifiers without(Modifiers others) const {
    return fromBits(static_cast<std::uint8_t>(m_bits & ~others.m_bits));
  }

  friend constexpr bool operator==(Modifiers, Modifiers) = default;

 private:
  constexpr explicit Modifiers(std::uint8_t bits) : m_bits(bits) {}

  std::uint8_t m_bits = 0;
};

constexpr Modifiers operator|(Modifiers some, Modifiers others) {
  return Modifiers::fromBits(static_cast<std::uint8_t>(some.bits() | others.bits()));
}

constexpr Modifiers operator|(Modifier one, Modifier other) {
  return Modifiers(one) | Modifiers(other);
}

inline constexpr Modifiers kLocks = Modifier::CapsLock | Modifier::NumLock;
/// With any of these held, a key is a command rather than text.
inline constexpr Modifiers kCommandModifiers =
    Modifier::Alt | Modifier::Control | Modifier::Super | Modifier::Hyper | Modifier::Meta;

}  // namespace zolt::vt
