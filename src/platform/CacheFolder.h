#pragma once

#include <string>

namespace zolt {

/// Zolt's folder in the user's cache folder, as the system names files; empty if there is none. It need not exist.
std::string cacheFolder();

}  // namespace zolt
