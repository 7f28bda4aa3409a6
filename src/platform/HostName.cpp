#include "platform/HostName.h"

#include <strings.h>
#include <unistd.h>

#include <array>

namespace zolt {

namespace {

bool isSame(std::string_view one, std::string_view other) {
  return one.size() == other.size() && strncasecmp(one.data(), other.data(), one.size()) == 0;
}

std::string_view withoutDomain(std::string_view name) {
  return name.substr(0, name.find('.'));
}

}  // namespace

bool isThisHost(std::string_view name) {
  if (name.empty() || isSame(name, "localhost")) return true;
  std::array<char, 256> buffer{};
  if (gethostname(buffer.data(), buffer.size() - 1) != 0) return false;
  const std::string_view own(buffer.data());
  if (isSame(name, own)) return true;
  // One of the two may lack the domain.
  const bool oneIsShort = name.find('.') == std::string_view::npos || own.find('.') == std::string_view::npos;
  return oneIsShort && isSame(withoutDomain(name), withoutDomain(own));
}

}  // namespace zolt
