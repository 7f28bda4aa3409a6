#include "terminal/links/UriParts.h"

#include <algorithm>

namespace zolt {

namespace {

constexpr std::string_view kUriSymbols = "-._~:/?#[]@!$&'()*+,;=%";
constexpr std::string_view kSchemeSymbols = "+-.";

bool isAsciiLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isLetterOrDigit(char c) {
  return isAsciiLetter(c) || (c >= '0' && c <= '9');
}

bool isScheme(std::string_view text) {
  const auto mayFollow = [](char c) { return isLetterOrDigit(c) || kSchemeSymbols.find(c) != kSchemeSymbols.npos; };
  return !text.empty() && isAsciiLetter(text.front()) && std::ranges::all_of(text, mayFollow);
}

// Takes the text up to the first of `ends`, or all of it.
std::string_view takeUntil(std::string_view& text, std::string_view ends) {
  const std::string_view taken = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(taken.size());
  return taken;
}

void splitAuthority(UriParts& parts, std::string_view authority) {
  const std::size_t at = authority.rfind('@');
  if (at != authority.npos) {
    parts.userInfo = authority.substr(0, at);
    authority.remove_prefix(at + 1);
  }
  const std::size_t literalEnd = authority.starts_with('[') ? authority.find(']') : 0;
  const std::size_t colon = authority.find(':', std::min(literalEnd, authority.size()));
  parts.host = authority.substr(0, colon);
  if (colon != authority.npos) parts.port = authority.substr(colon + 1);
}

}  // namespace

bool isUriByte(char c) {
  return isLetterOrDigit(c) || kUriSymbols.find(c) != kUriSymbols.npos;
}

std::optional<UriParts> splitUri(std::string_view text) {
  UriParts parts;
  parts.scheme = takeUntil(text, ":");
  if (text.empty() || !isScheme(parts.scheme)) return std::nullopt;
  text.remove_prefix(1);
  parts.hasAuthority = text.starts_with("//");
  if (parts.hasAuthority) {
    text.remove_prefix(2);
    splitAuthority(parts, takeUntil(text, "/?#"));
  }
  parts.path = takeUntil(text, "?#");
  parts.rest = text;
  return parts;
}

}  // namespace zolt
