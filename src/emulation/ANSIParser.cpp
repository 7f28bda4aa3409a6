#include "emulation/ANSIParser.h"

#include <algorithm>
#include <bit>
#include <optional>

#include "emulation/SGR.h"
#include "text/GraphemeClusters.h"
#include "text/TextScan.h"
#include "text/Utf8.h"

namespace zolt {

namespace {

constexpr char kEscape = '\x1B';
constexpr char kBell = '\x07';

bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}

// Whether a code point after this byte can join its cluster: never after a control (UAX #29, GB4).
bool canCarryMarks(char c) {
  return c >= 0x20 && c != 0x7F;
}

// A run of non-ASCII text is dropped whole. Only its edges matter: an ASCII character that forms a cluster with its
// non-ASCII neighbour is dropped too.
bool joinsTheCharacterBefore(std::string_view text, std::size_t runStart) {
  if (runStart == 0 || !canCarryMarks(text[runStart - 1])) return false;
  std::size_t length = 0;
  return joinsAsciiBefore(scalarAt(text, runStart, length));
}

bool joinsTheCharacterAfter(std::string_view text, std::size_t runEnd) {
  return runEnd != text.size() && canCarryMarks(text[runEnd]) && joinsAsciiAfter(scalarBefore(text, runEnd));
}

// By string ordering, that is by the scalars of the canonical composition: "m" with a diaeresis, which has no composed
// form, stands between "@" and "~", while an "e" with an acute accent is U+00E9 and does not.
bool isFinalCharacter(std::string_view cluster) {
  if (cluster.size() == 1) return cluster[0] >= 0x40 && cluster[0] <= 0x7E;
  const ComposedStart start = composedStart(cluster);
  return start.first >= 0x40 && (start.first < 0x7E || (start.first == 0x7E && start.alone));
}

struct ShortNumber {
  std::uint32_t value = 0;
  std::size_t digits = 0;  // 0 to 3
};

// The decimal number at `position`, 0 without digits; nothing if it has four or more, or may have.
std::optional<ShortNumber> shortNumber(std::string_view text, std::size_t position) {
  constexpr std::uint32_t kZeros = 0x30303030;
  constexpr std::uint32_t kAboveNine = 0x76767676;  // carries into the high bit of a byte from 10 on
  constexpr std::uint32_t kHighBits = 0x80808080;
  if (text.size() - position < 4) return std::nullopt;
  // No branch for each digit: how many there are is what a processor cannot guess.
  const std::uint32_t values = detail::fourBytes(text.data() + position) ^ kZeros;
  const std::uint32_t others = ((values + kAboveNine) | values) & kHighBits;
  if (others == 0) return std::nullopt;
  const auto digits = static_cast<std::size_t>(std::countr_zero(others)) / 8;
  // The units last, blanks before the first digit.
  const auto aligned = static_cast<std::uint32_t>(std::uint64_t{values} << (32 - 8 * digits));
  return ShortNumber{.value = (aligned >> 8 & 0xFF) * 100 + (aligned >> 16 & 0xFF) * 10 + (aligned >> 24),
                     .digits = digits};
}

}  // namespace

AttributedString ANSIParser::parse(std::string_view text) {
  AttributedString result;
  result.reserve(text.size(), std::min(m_runsInLastChunk, text.size() / 8));
  std::size_t position = 0;
  std::size_t keptUpTo = 0;  // the end of the last character kept; a combining mark right there drops it again
  while (position < text.size()) {
    const std::size_t plain = plainPrefix(text.substr(position));
    if (plain != 0) {
      result.appendText(text.substr(position, plain));
      position += plain;
      keptUpTo = position;
      if (position == text.size()) break;
    }
    const char c = text[position];
    if (c == kEscape) {
      makeAttributedString(result);
      const std::size_t end = parseEscapeSequence(text, position);
      position = end == kNoSequence ? position + 1 : end;
    } else if (c == '\r') {
      if (position + 1 < text.size() && text[position + 1] == '\n') {
        position += 2;  // one cluster, neither a carriage return nor a line feed: dropped
      } else {
        result.appendText(c);
        ++position;
      }
    } else if (isAscii(c)) {
      ++position;
    } else {
      const std::size_t runEnd = position + nonAsciiPrefix(text.substr(position));
      if (keptUpTo == position && joinsTheCharacterBefore(text, position)) result.dropLastByte();
      position = joinsTheCharacterAfter(text, runEnd) ? runEnd + 1 : runEnd;
    }
  }
  makeAttributedString(result);
  m_runsInLastChunk = result.runs().size();
  return result;
}

void ANSIParser::makeAttributedString(AttributedString& result) {
  if (result.pendingLength() == 0) return;
  if (m_rendition.fitsStyleCode()) {
    result.endRun(m_style);
  } else {
    result.endRun(m_rendition.attributes());
  }
}

std::size_t ANSIParser::parseEscapeSequence(std::string_view text, std::size_t escape) {
  const std::size_t next = escape + 1;
  if (next == text.size()) return kNoSequence;
  const std::size_t afterNext = clusterEnd(text, next);
  if (afterNext == next + 1) {
    switch (text[next]) {
      case '[':
        if (const std::size_t end = parsePlainSGR(text, next); end != kNoSequence) return end;
        return parseCSI(text, next);
      case ']':
        return parseOSC(text, next);
      case '(':
      case ')':
      case '*':
      case '+':
        // Character-set designation: that character and one more.
        return afterNext == text.size() ? afterNext : clusterEnd(text, afterNext);
      default:
        break;
    }
  }
  return afterNext;
}

std::size_t ANSIParser::parseCSI(std::string_view text, std::size_t bracket) {
  const std::size_t paramsStart = bracket + 1;
  for (std::size_t position = paramsStart; position < text.size();) {
    // An ASCII character below "@" is never final, whatever marks follow it: it composes to nothing that is.
    if (isAscii(text[position]) && text[position] < 0x40) {
      ++position;
      continue;
    }
    const std::size_t end = clusterEnd(text, position);
    const std::string_view character = text.substr(position, end - position);
    if (isFinalCharacter(character)) {
      handleCSICommand(character, text.substr(paramsStart, position - paramsStart));
      return end;
    }
    position = end;
  }
  return kNoSequence;
}

std::size_t ANSIParser::parseOSC(std::string_view text, std::size_t bracket) {
  // BEL and ESC are controls and never part of a cluster: a byte search finds them.
  std::size_t position = bracket + 1;
  while (true) {
    position += controlFreePrefix(text.substr(position));
    if (position == text.size()) return position;
    const char control = text[position++];
    if (control == kBell) return position;
    if (control == kEscape && position < text.size() && text[position] == '\\' &&
        clusterEnd(text, position) == position + 1) {
      return position + 1;
    }
  }
}

void ANSIParser::handleCSICommand(std::string_view command, std::string_view params) {
  // "H", "f", "J", "K" and "A" are recognised and, like every other final, deliberately do nothing: a log has no
  // cursor.
  if (command == "m") handleSGR(params);
}

void ANSIParser::handleSGR(std::string_view params) {
  m_codes.clear();
  parseSGRCodes(params, m_codes);
  apply(m_codes);
}

// Colourful output is mostly these: they are read without first looking for their end.
std::size_t ANSIParser::parsePlainSGR(std::string_view text, std::size_t bracket) {
  std::size_t count = 0;
  std::size_t position = bracket + 1;
  while (position < text.size()) {
    const auto number = shortNumber(text, position);
    if (!number) return kNoSequence;
    position += number->digits;
    const char c = text[position++];  // there are four bytes at least, and three digits at most
    if (c != ';' && c != 'm') return kNoSequence;
    if (number->digits != 0) {
      if (count == m_plainCodes.size()) return kNoSequence;
      m_plainCodes[count++] = number->value;
    }
    if (c == 'm') {
      if (position < text.size() && !isAscii(text[position])) return kNoSequence;  // possibly a mark on the "m"
      if (position == bracket + 2) m_plainCodes[count++] = 0;                      // no parameters at all
      apply({m_plainCodes.data(), count});
      return position;
    }
  }
  return kNoSequence;
}

void ANSIParser::apply(std::span<const std::int64_t> codes) {
  m_rendition.apply(codes);
  if (m_rendition.fitsStyleCode()) m_style = m_rendition.styleCode();
}

}  // namespace zolt
