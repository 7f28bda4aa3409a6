#include "terminal/hints/AddressFinder.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>

namespace zolt {

namespace {

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr bool isWord(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

bool isAddress(int family, std::string_view text) {
  std::array<char, INET6_ADDRSTRLEN> ended{};
  if (text.size() >= ended.size()) return false;
  std::ranges::copy(text, ended.begin());
  std::array<unsigned char, sizeof(in6_addr)> parsed{};
  return inet_pton(family, ended.data(), parsed.data()) == 1;
}

struct Form {
  int family;
  bool (*isPart)(char c);
  bool (*isEnd)(std::string_view text);  // whether its last character is the sentence's
};

constexpr Form kIPv4{.family = AF_INET,
                     .isPart = [](char c) { return isDigit(c) || c == '.'; },
                     .isEnd = [](std::string_view text) { return text.ends_with('.'); }};
constexpr Form kIPv6{
    .family = AF_INET6,
    .isPart = [](char c) { return isHexDigit(c) || c == ':' || c == '.'; },
    .isEnd =
        [](std::string_view text) { return text.ends_with('.') || (text.ends_with(':') && !text.ends_with("::")); }};

// In a run of characters that may be part of one.
ByteRange addressIn(std::string_view line, ByteRange run, const Form& form) {
  const bool isAfterWord = run.begin > 0 && (isWord(line[run.begin - 1]) || line[run.begin - 1] == '-');
  if (run.end < line.size() && isWord(line[run.end])) return {};
  while (!run.empty() && form.isEnd(line.substr(run.begin, run.end - run.begin))) {
    --run.end;
  }
  // "addr:fe80::1": what is before the first colon belongs to the word.
  std::string_view text = line.substr(run.begin, run.end - run.begin);
  const std::size_t colon = text.find(':');
  const bool mayFollowColon = colon != text.npos && !text.substr(colon).starts_with("::");
  if (isAfterWord || (colon == 0 && mayFollowColon)) {
    if (!mayFollowColon) return {};
    run.begin += colon + 1;
    text.remove_prefix(colon + 1);
  }
  return std::ranges::any_of(text.substr(0, INET6_ADDRSTRLEN), isDigit) && isAddress(form.family, text) ? run
                                                                                                        : ByteRange();
}

std::vector<ByteRange> find(std::string_view line, ByteRange part, const Form& form) {
  std::vector<ByteRange> found;
  std::size_t at = part.begin;
  while (at < part.end) {
    const std::size_t begin = at;
    while (at < part.end && form.isPart(line[at])) {
      ++at;
    }
    if (at == begin) {
      ++at;
    } else if (const ByteRange address = addressIn(line, {.begin = begin, .end = at}, form); !address.empty()) {
      found.push_back(address);
    }
  }
  return found;
}

}  // namespace

std::vector<ByteRange> findIPv4(std::string_view line, ByteRange part) {
  return find(line, part, kIPv4);
}

std::vector<ByteRange> findIPv6(std::string_view line, ByteRange part) {
  return find(line, part, kIPv6);
}

}  // namespace zolt
