#include "terminal/links/LinkFinder.h"

#include <QChar>
#include <algorithm>
#include <optional>

#include "terminal/links/UriParts.h"
#include "text/Utf8.h"

namespace zolt {

namespace {

enum class Form { Slashes, Address };

struct SchemeRow {
  std::string_view scheme;
  Form form;  // what follows ":": "//", or an address with "@"
};

constexpr SchemeRow kSchemes[] = {
    {"http", Form::Slashes},   {"https", Form::Slashes},  {"file", Form::Slashes},   {"ftp", Form::Slashes},
    {"ftps", Form::Slashes},   {"sftp", Form::Slashes},   {"ssh", Form::Slashes},    {"git", Form::Slashes},
    {"gemini", Form::Slashes}, {"gopher", Form::Slashes}, {"mailto", Form::Address},
};

constexpr std::string_view kTrailing = ".,;:!?'\"([";

char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isPartOfWord(char c) {
  const char lower = lowerCase(c);
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '_' || c == '+' || c == '-';
}

// The scheme that ends at `colon` and begins a word.
const SchemeRow* schemeBefore(std::string_view line, std::size_t colon) {
  for (const SchemeRow& row : kSchemes) {
    const std::size_t size = row.scheme.size();
    if (colon < size) continue;
    const std::string_view word = line.substr(colon - size, size);
    if (!std::ranges::equal(word, row.scheme, {}, lowerCase)) continue;
    if (colon == size || !isPartOfWord(line[colon - size - 1])) return &row;
  }
  return nullptr;
}

// The bytes at `at` that may be part of a URL; 0 if they may not.
std::size_t urlCharacter(std::string_view line, std::size_t at) {
  if (static_cast<unsigned char>(line[at]) < 0x80) return isUriByte(line[at]) ? 1 : 0;
  const DecodedScalar decoded = decodeUtf8(line.data() + at, line.data() + line.size());
  if (decoded.length == 0) return 0;
  return QChar::isLetterOrNumber(decoded.scalar) || QChar::isMark(decoded.scalar) ? decoded.length : 0;
}

// How many brackets of each kind are open.
struct OpenBrackets {
  int round = 0;
  int square = 0;

  // Whether `c` is not a bracket that closes what was never opened.
  bool take(char c) {
    round += (c == '(') - (c == ')');
    square += (c == '[') - (c == ']');
    return round >= 0 && square >= 0;
  }
};

std::size_t urlEnd(std::string_view line, std::size_t at, bool isQuoted) {
  OpenBrackets brackets;
  while (at < line.size()) {
    const std::size_t length = urlCharacter(line, at);
    if (length == 0 || (isQuoted && line[at] == '\'') || !brackets.take(line[at])) break;
    at += length;
  }
  return at;
}

std::size_t withoutTrailing(std::string_view line, std::size_t begin, std::size_t end) {
  while (end > begin && kTrailing.find(line[end - 1]) != kTrailing.npos) {
    --end;
  }
  return end;
}

bool isAddress(std::string_view text) {
  const std::size_t at = text.find('@');
  return at != text.npos && at > 0 && at + 1 < text.size();
}

// Where the part after the scheme begins that must not be empty.
std::optional<std::size_t> bodyStart(std::string_view line, std::size_t afterColon, Form form) {
  if (form == Form::Address) return afterColon;
  return line.substr(afterColon).starts_with("//") ? std::optional(afterColon + 2) : std::nullopt;
}

}  // namespace

std::vector<ByteRange> findLinks(std::string_view line) {
  std::vector<ByteRange> links;
  std::size_t from = 0;
  while (true) {
    const std::size_t colon = line.find(':', from);
    if (colon == line.npos) return links;
    from = colon + 1;
    const SchemeRow* scheme = schemeBefore(line, colon);
    const std::optional<std::size_t> body = scheme ? bodyStart(line, colon + 1, scheme->form) : std::nullopt;
    if (!body) continue;
    const std::size_t begin = colon - scheme->scheme.size();
    from = urlEnd(line, *body, begin > 0 && line[begin - 1] == '\'');
    const std::size_t end = withoutTrailing(line, *body, from);
    const std::string_view rest = line.substr(*body, end - *body);
    if (rest.empty() || (scheme->form == Form::Address && !isAddress(rest))) continue;
    links.push_back({.begin = begin, .end = end});
  }
}

}  // namespace zolt
