#pragma once

#include <string_view>

namespace zolt::vt {

/// What every row of the tables of control functions tells of itself, for the reference.
struct Documented {
  std::string_view sequence;  ///< as it is written: "CSI Ps A"
  std::string_view name;      ///< the mnemonic, which no other row has: "CUU", "OSC 8", "DECSET 2004"
  std::string_view origin;    ///< who defined it: "ECMA-48", "VT420", "xterm"
  std::string_view meaning;
};

}  // namespace zolt::vt
