#pragma once

#include <string_view>

namespace zolt::vt {

/// The documentation that each row of the tables of control functions carries, for docs/escape-sequences.md.
struct Documented {
  std::string_view sequence;  ///< in xterm's notation: "CSI Ps A"
  std::string_view name;      ///< unique: "CUU", "OSC 8", "DECSET 2004"
  std::string_view origin;    ///< where it comes from: "ECMA-48", "VT420", "xterm"
  std::string_view meaning;
};

}  // namespace zolt::vt
