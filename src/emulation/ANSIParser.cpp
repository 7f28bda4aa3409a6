#include "emulation/ANSIParser.h"

#include <algorithm>

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
      position = parseEscapeSequence(text, position).value_or(position + 1);
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
  if (m_style) {
    result.endRun(*m_style);
  } else {
    result.endRun(m_rendition.attributes());
  }
}

ANSIParser::SequenceEnd ANSIParser::parseEscapeSequence(std::string_view text, std::size_t escape) {
  const std::size_t next = escape + 1;
  if (next == text.size()) return std::nullopt;
  const std::size_t afterNext = clusterEnd(text, next);
  if (afterNext == next + 1) {
    switch (text[next]) {
      case '[':
        if (const SequenceEnd end = parsePlainSGR(text, next)) return end;
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

ANSIParser::SequenceEnd ANSIParser::parseCSI(std::string_view text, std::size_t bracket) {
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
  return std::nullopt;
}

ANSIParser::SequenceEnd ANSIParser::parseOSC(std::string_view text, std::size_t bracket) {
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
ANSIParser::SequenceEnd ANSIParser::parsePlainSGR(std::string_view text, std::size_t bracket) {
  constexpr int kMaxDigits = 18;  // any number of so many digits fits a code
  std::size_t count = 0;
  std::int64_t code = 0;
  int digits = 0;
  for (std::size_t position = bracket + 1; position < text.size(); ++position) {
    const char c = text[position];
    if (c >= '0' && c <= '9') {
      if (++digits > kMaxDigits) return std::nullopt;
      code = code * 10 + (c - '0');
      continue;
    }
    if (c != ';' && c != 'm') return std::nullopt;
    if (digits != 0) {
      if (count == m_plainCodes.size()) return std::nullopt;
      m_plainCodes[count++] = code;
    }
    if (c == 'm') {
      const std::size_t end = position + 1;
      if (end < text.size() && !isAscii(text[end])) return std::nullopt;  // possibly a mark on the "m"
      if (end == bracket + 2) m_plainCodes[count++] = 0;                  // no parameters at all
      apply({m_plainCodes.data(), count});
      return end;
    }
    code = 0;
    digits = 0;
  }
  return std::nullopt;
}

void ANSIParser::apply(std::span<const std::int64_t> codes) {
  m_rendition.apply(codes);
  m_style = m_rendition.styleCode();
}

}  // namespace zolt
