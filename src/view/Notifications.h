#pragma once

namespace zolt {

/// Names on the default notification centre, posted by menus and observed by every terminal's window.
inline constexpr char clearTerminal[] = "clearTerminal";
inline constexpr char toggleBrewSidebar[] = "toggleBrewSidebar";

}  // namespace zolt
