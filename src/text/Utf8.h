#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zolt {

/// U+FFFD, which stands in for whatever cannot be decoded.
inline constexpr char32_t kReplacementCharacter = U'\uFFFD';

/// What a byte says about the UTF-8 sequence that it starts: a row of Unicode's table 3-7.
struct Utf8Lead {
  std::uint8_t length = 0;   ///< bytes in the sequence; 0 for a byte that cannot start one
  std::uint8_t payload = 0;  ///< mask of the bits that belong to the scalar
  std::uint8_t minSecond = 0x80;
  std::uint8_t maxSecond = 0xBF;
};

/// By lead byte.
inline constexpr std::array<Utf8Lead, 256> kUtf8Leads = [] {
  struct Row {
    unsigned first;
    unsigned last;
    Utf8Lead lead;
  };
  // clang-format off
  constexpr Row kRows[] = {
      {0x00, 0x7F, {1, 0x7F}},
      {0xC2, 0xDF, {2, 0x1F}},
      {0xE0, 0xE0, {3, 0x0F, 0xA0, 0xBF}},  // not overlong
      {0xE1, 0xEC, {3, 0x0F}},
      {0xED, 0xED, {3, 0x0F, 0x80, 0x9F}},  // no surrogates
      {0xEE, 0xEF, {3, 0x0F}},
      {0xF0, 0xF0, {4, 0x07, 0x90, 0xBF}},  // not overlong
      {0xF1, 0xF3, {4, 0x07}},
      {0xF4, 0xF4, {4, 0x07, 0x80, 0x8F}},  // at most U+10FFFF
  };
  // clang-format on
  std::array<Utf8Lead, 256> leads{};
  for (const Row& row : kRows) {
    for (unsigned byte = row.first; byte <= row.last; ++byte) {
      leads[byte] = row.lead;
    }
  }
  return leads;
}();

constexpr bool isUtf8Continuation(char byte) {
  return (static_cast<std::uint8_t>(byte) & 0xC0) == 0x80;
}

/// Appends a continuation byte's bits to a scalar.
constexpr char32_t withContinuation(char32_t scalar, char byte) {
  return scalar << 6 | (static_cast<std::uint8_t>(byte) & 0x3FU);
}

struct DecodedScalar {
  char32_t scalar = 0;
  std::size_t length = 0;  ///< in bytes; 0 if no well-formed scalar could be decoded
};

/// Decodes the scalar at the start of `text`, which may be anything and ends at `end`.
inline DecodedScalar decodeUtf8(const char* text, const char* end) {
  if (text == end) return {};
  const auto first = static_cast<std::uint8_t>(*text);
  const Utf8Lead lead = kUtf8Leads[first];
  if (lead.length <= 1) return {.scalar = static_cast<char32_t>(first & lead.payload), .length = lead.length};
  if (end - text < lead.length) return {};
  const auto second = static_cast<std::uint8_t>(text[1]);
  if (second < lead.minSecond || second > lead.maxSecond) return {};
  char32_t scalar = withContinuation(first & lead.payload, text[1]);
  if (lead.length > 2) {
    if (!isUtf8Continuation(text[2])) return {};
    scalar = withContinuation(scalar, text[2]);
    if (lead.length > 3) {
      if (!isUtf8Continuation(text[3])) return {};
      scalar = withContinuation(scalar, text[3]);
    }
  }
  return {.scalar = scalar, .length = lead.length};
}

/// Decodes the scalar at `position` in valid UTF-8; `length` is set to its length in bytes (1 to 4).
inline char32_t scalarAt(std::string_view text, std::size_t position, std::size_t& length) {
  const auto first = static_cast<std::uint8_t>(text[position]);
  const Utf8Lead lead = kUtf8Leads[first];
  length = lead.length;
  char32_t scalar = first & lead.payload;
  for (std::size_t i = 1; i < lead.length; ++i) {
    scalar = withContinuation(scalar, text[position + i]);
  }
  return scalar;
}

/// Decodes the scalar that ends right before `position` (> 0) in valid UTF-8.
inline char32_t scalarBefore(std::string_view text, std::size_t position) {
  std::size_t start = position - 1;
  while (isUtf8Continuation(text[start])) {
    --start;
  }
  std::size_t length = 0;
  return scalarAt(text, start, length);
}

/// Encodes `scalar`, at most U+10FFFF, at `out`, which has room for 4 bytes. Returns the end of what was written.
inline char* writeUtf8(char* out, char32_t scalar) {
  const auto put = [&](char32_t byte) { *out++ = static_cast<char>(byte); };
  if (scalar < 0x80) {
    put(scalar);
    return out;
  }
  if (scalar < 0x800) {
    put(0xC0 | scalar >> 6);
  } else {
    if (scalar < 0x10000) {
      put(0xE0 | scalar >> 12);
    } else {
      put(0xF0 | scalar >> 18);
      put(0x80 | (scalar >> 12 & 0x3F));
    }
    put(0x80 | (scalar >> 6 & 0x3F));
  }
  put(0x80 | (scalar & 0x3F));
  return out;
}

/// Appends the encoding of `scalar`, at most U+10FFFF.
inline void appendUtf8(std::string& out, char32_t scalar) {
  std::array<char, 4> bytes;
  out.append(bytes.data(), static_cast<std::size_t>(writeUtf8(bytes.data(), scalar) - bytes.data()));
}

}  // namespace zolt
