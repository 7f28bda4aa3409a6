#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zolt {

/// What to do with a link that the user wants to follow.
enum class LinkAction {
  Open,    ///< http and https, mailto, and files of this machine
  Ask,     ///< other schemes, whose program might do anything
  Refuse,  ///< not a URI, not for this machine, or made to mislead
};

/// Longer URIs are refused; so long a link the engine keeps.
inline constexpr std::size_t kMaxLinkBytes = 2083;

/// `uri` is any bytes, as a program wrote them: a URI (RFC 3986), also with characters that are not ASCII (RFC 3987).
/// `thisHost` is the machine's name. A file is refused if its host is another, or its decoded path is not absolute, has
/// a ".." or control characters; whether it exists is not looked at. Pure, any thread.
LinkAction linkAction(std::string_view uri, std::string_view thisHost);

/// Where the link leads, to be shown to the user: without user information, the host in its ASCII form (Punycode), and
/// all that is invisible or changes the direction of text shown. UTF-8, in one line.
std::string displayTarget(std::string_view uri);

}  // namespace zolt
