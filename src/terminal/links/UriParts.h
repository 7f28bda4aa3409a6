#pragma once

#include <optional>
#include <string_view>

namespace zolt {

/// The parts of a URI (RFC 3986, appendix B), undecoded, in the text that was given.
struct UriParts {
  std::string_view scheme;
  bool hasAuthority = false;  ///< "//" follows the scheme
  std::string_view userInfo;  ///< without "@"
  std::string_view host;      ///< an IP literal with its brackets
  std::string_view port;      ///< without ":"
  std::string_view path;
  std::string_view rest;  ///< query and fragment with "?" and "#"
};

/// Whether ASCII `c` is a letter, a digit, or one of the symbols of a URI (RFC 3986, 2.2 and 2.3, and "%").
bool isUriByte(char c);

/// Splits `text`; nothing if it does not begin with a scheme and ":". Checks nothing after them.
std::optional<UriParts> splitUri(std::string_view text);

}  // namespace zolt
