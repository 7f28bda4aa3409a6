#pragma once

#include <string>
#include <string_view>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// The first difference between two terminals of which one was restored from what the other had saved, or empty: in
/// what they save, their snapshots, and the replies and events that they have for the taking. The restored one's
/// scrollback has only what came after it was saved.
std::string differenceTo(Terminal& restored, Terminal& original);

/// Saves `terminal`, restores it with its settings, and feeds both: the first difference before and after, or empty.
/// Replies and events that nobody has taken are dropped first.
std::string continuationError(Terminal& terminal, std::string_view rest);

/// Uses a terminal that was restored from any bytes: the first rule that it breaks, or empty.
std::string useError(Terminal& terminal);

}  // namespace zolt::vt::test
