#pragma once

namespace zolt {

/// The two ways in which a window shows a terminal.
enum class Display {
  Log,            ///< the output as a log of styled text
  FullEmulation,  ///< a complete terminal
};

}  // namespace zolt
