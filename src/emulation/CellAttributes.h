#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>

namespace zolt {

/// A set of rendition flags: an option set with the usual set algebra over a signed 64-bit raw value.
///
/// Every bit pattern is a value; raw value 0 is the empty set, the only one that the screen buffer stores.
class CellAttributes {
 public:
  using RawValue = std::int64_t;

  constexpr CellAttributes() = default;
  constexpr explicit CellAttributes(RawValue rawValue) : m_rawValue(rawValue) {}
  /// The union of `members`.
  constexpr CellAttributes(std::initializer_list<CellAttributes> members) {
    for (const CellAttributes member : members) {
      formUnion(member);
    }
  }

  static const CellAttributes bold;
  static const CellAttributes dim;
  static const CellAttributes italic;
  static const CellAttributes underline;
  static const CellAttributes blink;
  static const CellAttributes reverse;
  static const CellAttributes hidden;
  static const CellAttributes strikethrough;

  constexpr RawValue rawValue() const { return m_rawValue; }
  constexpr bool isEmpty() const { return m_rawValue == 0; }
  constexpr bool contains(CellAttributes other) const { return (m_rawValue & other.m_rawValue) == other.m_rawValue; }
  constexpr bool isSubset(CellAttributes of) const { return of.contains(*this); }
  constexpr bool isSuperset(CellAttributes of) const { return contains(of); }
  constexpr bool isDisjoint(CellAttributes with) const { return (m_rawValue & with.m_rawValue) == 0; }

  [[nodiscard]] constexpr CellAttributes setUnion(CellAttributes with) const {
    return CellAttributes(m_rawValue | with.m_rawValue);
  }
  [[nodiscard]] constexpr CellAttributes intersection(CellAttributes with) const {
    return CellAttributes(m_rawValue & with.m_rawValue);
  }
  [[nodiscard]] constexpr CellAttributes symmetricDifference(CellAttributes with) const {
    return CellAttributes(m_rawValue ^ with.m_rawValue);
  }
  [[nodiscard]] constexpr CellAttributes subtracting(CellAttributes other) const {
    return CellAttributes(m_rawValue & ~other.m_rawValue);
  }

  constexpr void formUnion(CellAttributes with) { *this = setUnion(with); }
  constexpr void formIntersection(CellAttributes with) { *this = intersection(with); }
  constexpr void formSymmetricDifference(CellAttributes with) { *this = symmetricDifference(with); }
  constexpr void subtract(CellAttributes other) { *this = subtracting(other); }

  /// Adds the bits of `member`. Returns whether any of them was new, and `member`; or false and the bits that were
  /// already set.
  constexpr std::pair<bool, CellAttributes> insert(CellAttributes member) {
    const CellAttributes before = intersection(member);
    if (before == member) return {false, before};
    formUnion(member);
    return {true, member};
  }

  /// Removes the bits of `member`. Returns those that were set, or nothing if none was.
  constexpr std::optional<CellAttributes> remove(CellAttributes member) {
    const CellAttributes before = intersection(member);
    if (before.isEmpty()) return std::nullopt;
    subtract(member);
    return before;
  }

  /// Adds the bits of `with`. Returns those that were already set, or nothing if none was.
  constexpr std::optional<CellAttributes> update(CellAttributes with) {
    const CellAttributes before = intersection(with);
    formUnion(with);
    if (before.isEmpty()) return std::nullopt;
    return before;
  }

  friend constexpr bool operator==(CellAttributes, CellAttributes) = default;

 private:
  RawValue m_rawValue = 0;
};

inline constexpr CellAttributes CellAttributes::bold = CellAttributes(RawValue{1} << 0);
inline constexpr CellAttributes CellAttributes::dim = CellAttributes(RawValue{1} << 1);
inline constexpr CellAttributes CellAttributes::italic = CellAttributes(RawValue{1} << 2);
inline constexpr CellAttributes CellAttributes::underline = CellAttributes(RawValue{1} << 3);
inline constexpr CellAttributes CellAttributes::blink = CellAttributes(RawValue{1} << 4);
inline constexpr CellAttributes CellAttributes::reverse = CellAttributes(RawValue{1} << 5);
inline constexpr CellAttributes CellAttributes::hidden = CellAttributes(RawValue{1} << 6);
inline constexpr CellAttributes CellAttributes::strikethrough = CellAttributes(RawValue{1} << 7);

}  // namespace zolt
