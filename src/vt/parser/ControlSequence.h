#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zolt::vt {

/// A parameter of a control sequence.
struct Parameter {
  static constexpr std::int32_t omitted = -1;

  std::int32_t value = omitted;  ///< saturates at INT32_MAX
  bool isSub = false;            ///< preceded by a colon: a sub-parameter of the one before (ISO 8613-6)

  friend bool operator==(const Parameter&, const Parameter&) = default;
};

/// A control sequence or the start of a device control string: ECMA-48 5.4, with DEC's private prefixes.
struct ControlSequence {
  /// Parameters past this limit are dropped; a sequence with more intermediates than this has no effect.
  static constexpr std::size_t maxParameters = 32;
  static constexpr std::size_t maxIntermediates = 2;

  char prefix = 0;  ///< '<', '=', '>' or '?'; 0 if there is none
  char final = 0;   ///< 0x40 to 0x7E
  std::uint8_t intermediateCount = 0;
  std::uint8_t parameterCount = 0;
  std::array<char, maxIntermediates> intermediates{};
  std::array<Parameter, maxParameters> parameters{};

  std::string_view intermediateText() const { return {intermediates.data(), intermediateCount}; }
  /// Parameter `index`, or `fallback` if it is missing or omitted.
  std::int32_t parameter(std::size_t index, std::int32_t fallback) const {
    const bool given = index < parameterCount && parameters[index].value != Parameter::omitted;
    return given ? parameters[index].value : fallback;
  }
};

/// An escape sequence: ECMA-48 5.3 and ECMA-35 13.2.
struct EscapeSequence {
  std::string_view intermediates;  ///< at most ControlSequence::maxIntermediates
  char final = 0;                  ///< 0x30 to 0x7E
};

}  // namespace zolt::vt
