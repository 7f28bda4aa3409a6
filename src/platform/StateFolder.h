#pragma once

#include <string>

namespace zolt {

/// Zolt's folder for what it keeps from one run to the next, besides settings (XDG Base Directory Specification:
/// XDG_STATE_HOME); empty if there is none. It need not exist.
std::string stateFolder();

}  // namespace zolt
