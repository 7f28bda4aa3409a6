#include "terminal/hints/HintFinder.h"

#include <QChar>
#include <algorithm>
#include <utility>

#include "terminal/hints/AddressFinder.h"
#include "terminal/links/LinkFinder.h"
#include "text/Utf8.h"

namespace zolt {

namespace {

// What may stand in a path, besides letters and digits. A colon ends it.
constexpr std::string_view kPathSymbols = "/._-+~@%#";
// A path from the current folder that is shorter is rather "n/a" or "km/h".
constexpr std::size_t kShortestRelativePath = 5;
constexpr std::string_view kHashDigits = "0123456789abcdef";
constexpr std::size_t kShortestHash = 7;
constexpr std::size_t kLongestHash = 40;
// Of a file's name after its last dot.
constexpr std::size_t kLongestExtension = 12;
// Of a line's or column's number.
constexpr std::size_t kLongestNumber = 9;

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isHashDigit(char c) {
  return kHashDigits.find(c) != kHashDigits.npos;
}

constexpr bool isWord(char c) {
  return isLetter(c) || isDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

// The bytes at `at` that may be part of a path; 0 if they may not.
std::size_t pathCharacter(std::string_view line, std::size_t at) {
  const char c = line[at];
  if (static_cast<unsigned char>(c) < 0x80) {
    return isLetter(c) || isDigit(c) || kPathSymbols.find(c) != kPathSymbols.npos ? 1 : 0;
  }
  const DecodedScalar decoded = decodeUtf8(line.data() + at, line.data() + line.size());
  if (decoded.length == 0) return 0;
  return QChar::isLetterOrNumber(decoded.scalar) || QChar::isMark(decoded.scalar) ? decoded.length : 0;
}

// The end of the digits at `at`, if they are a number of a line and nothing follows that a number does not end before.
std::size_t numberEnd(std::string_view line, std::size_t at) {
  std::size_t end = at;
  while (end < line.size() && isDigit(line[end]) && end - at <= kLongestNumber) {
    ++end;
  }
  return end - at > kLongestNumber || (end < line.size() && isWord(line[end])) ? at : end;
}

// The end of ":line" or ":line:column" at `at`, or `at` if there is none.
std::size_t lineNumberEnd(std::string_view line, std::size_t at) {
  for (int part = 0; part < 2 && at < line.size() && line[at] == ':'; ++part) {
    const std::size_t end = numberEnd(line, at + 1);
    if (end == at + 1) break;
    at = end;
  }
  return at;
}

// Whether the text ends like a file's name: a dot, and a few letters and digits of which the first is a letter.
bool hasExtension(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == name.npos || dot == 0) return false;
  const std::string_view extension = name.substr(dot + 1);
  return !extension.empty() && extension.size() <= kLongestExtension && isLetter(extension.front()) &&
         std::ranges::all_of(extension, [](char c) { return isLetter(c) || isDigit(c); });
}

bool hasLetter(std::string_view text) {
  return std::ranges::any_of(text, [](char c) { return isLetter(c) || static_cast<unsigned char>(c) >= 0x80; });
}

// Dots at the end are the sentence's; after a slash they are a folder.
std::string_view withoutDots(std::string_view text) {
  const std::size_t last = text.find_last_not_of('.');
  return last == text.npos || text[last] == '/' ? text : text.substr(0, last + 1);
}

bool isPath(std::string_view text) {
  if (text.find('/') == text.npos || !hasLetter(text) || text.find("//") != text.npos) return false;
  const bool isRelative = text.front() != '/' && text.front() != '.' && text.front() != '~';
  return !isRelative || text.size() >= kShortestRelativePath;
}

class Finder {
 public:
  Finder(std::string_view line, std::span<const ByteRange> taken) : m_line(line), m_taken(taken) {}

  std::vector<FoundHint> find() {
    addLinks();
    findBetween(&Finder::findAddresses6);
    findBetween(&Finder::findPaths);
    findBetween(&Finder::findAddresses4);
    findBetween(&Finder::findHashes);
    return std::move(m_found);
  }

 private:
  using Search = void (Finder::*)(std::size_t begin, std::size_t end);

  void addLinks() {
    auto next = m_taken.begin();
    for (const ByteRange& link : findLinks(m_line)) {
      while (next != m_taken.end() && next->end <= link.begin) {
        ++next;
      }
      if (next == m_taken.end() || next->begin >= link.end) add(HintKind::Link, link.begin, link.end);
    }
    m_found.swap(m_added);
  }

  void add(HintKind kind, std::size_t begin, std::size_t end) {
    m_added.push_back({.range = {.begin = begin, .end = end}, .kind = kind});
  }

  // Searches what is neither taken nor found yet.
  void findBetween(Search search) {
    std::size_t at = 0;
    auto taken = m_taken.begin();
    auto found = m_found.begin();
    while (true) {
      const bool isTaken = taken != m_taken.end() && (found == m_found.end() || taken->begin <= found->range.begin);
      if (!isTaken && found == m_found.end()) break;
      const ByteRange range = isTaken ? *taken++ : found++->range;
      if (at < range.begin) (this->*search)(at, range.begin);
      at = std::max(at, range.end);
    }
    if (at < m_line.size()) (this->*search)(at, m_line.size());
    const auto middle = static_cast<std::ptrdiff_t>(m_found.size());
    m_found.insert(m_found.end(), m_added.begin(), m_added.end());
    m_added.clear();
    std::ranges::inplace_merge(m_found, m_found.begin() + middle, {},
                               [](const FoundHint& each) { return each.range.begin; });
  }

  void findAddresses6(std::size_t begin, std::size_t end) {
    for (const ByteRange& each : findIPv6(m_line, {.begin = begin, .end = end}))
      add(HintKind::Address, each.begin, each.end);
  }

  void findAddresses4(std::size_t begin, std::size_t end) {
    for (const ByteRange& each : findIPv4(m_line, {.begin = begin, .end = end}))
      add(HintKind::Address, each.begin, each.end);
  }

  void findPaths(std::size_t at, std::size_t end) {
    const std::string_view part = m_line.substr(0, end);
    while (at < end) {
      const std::size_t begin = at;
      while (at < end) {
        const std::size_t length = pathCharacter(part, at);
        if (length == 0) break;
        at += length;
      }
      if (at > begin) {
        at = addPath(part, begin, at);
      } else {
        ++at;
      }
    }
  }

  // The end of what was looked at.
  std::size_t addPath(std::string_view part, std::size_t begin, std::size_t end) {
    const std::size_t numbersEnd = lineNumberEnd(part, end);
    const std::string_view name = part.substr(begin, end - begin);
    if (numbersEnd > end) {
      if (!isPath(name) && !hasExtension(name)) return end;
      add(HintKind::Path, begin, numbersEnd);
      return numbersEnd;
    }
    const std::string_view path = withoutDots(name);
    const bool isTag = path.front() == '/' && begin > 0 && part[begin - 1] == '<';
    if (isPath(path) && !isTag) add(HintKind::Path, begin, begin + path.size());
    return end;
  }

  void findHashes(std::size_t at, std::size_t end) {
    while (at < end) {
      const std::size_t begin = at;
      while (at < end && isHashDigit(m_line[at])) {
        ++at;
      }
      if (at == begin) {
        ++at;
      } else if (isHash(begin, at)) {
        add(HintKind::Hash, begin, at);
      }
    }
  }

  // Digits with hyphens between them are something else, a UUID perhaps.
  bool isGroupBefore(std::size_t at) const {
    if (at < 2 || m_line[at - 1] != '-') return false;
    const std::string_view before = m_line.substr(0, at - 1).substr(at - 1 - std::min(at - 1, kLongestHash));
    const std::size_t last = before.find_last_not_of(kHashDigits);
    return last == before.npos || (last + 1 < before.size() && !isWord(before[last]));
  }

  bool isGroupAfter(std::size_t at) const {
    if (at >= m_line.size() || m_line[at] != '-') return false;
    const std::string_view after = m_line.substr(at + 1, kLongestHash);
    const std::size_t end = after.find_first_not_of(kHashDigits);
    return end == after.npos ? !after.empty() : end > 0 && !isWord(after[end]);
  }

  bool isHash(std::size_t begin, std::size_t end) const {
    const std::string_view digits = m_line.substr(begin, end - begin);
    if (digits.size() < kShortestHash || digits.size() > kLongestHash) return false;
    if (std::ranges::all_of(digits, isDigit) || std::ranges::none_of(digits, isDigit)) return false;
    if ((begin > 0 && isWord(m_line[begin - 1])) || (end < m_line.size() && isWord(m_line[end]))) return false;
    return !isGroupBefore(begin) && !isGroupAfter(end);
  }

  std::string_view m_line;
  std::span<const ByteRange> m_taken;
  std::vector<FoundHint> m_found;  // in order
  std::vector<FoundHint> m_added;  // by the search that is running
};

}  // namespace

std::vector<FoundHint> findHints(std::string_view line, std::span<const ByteRange> taken) {
  return Finder(line, taken).find();
}

std::string_view pathWithoutLine(std::string_view path) {
  return path.substr(0, path.find(':'));
}

}  // namespace zolt
