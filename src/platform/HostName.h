#pragma once

#include <string_view>

namespace zolt {

/// Whether a host name is this machine's: empty, "localhost", or what the machine calls itself, with or without its
/// domain, ignoring case. Any thread.
bool isThisHost(std::string_view name);

}  // namespace zolt
