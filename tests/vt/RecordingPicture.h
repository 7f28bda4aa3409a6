#pragma once

#include <string>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// A recording's screen in the readable form of its golden file: the cursor, the title, modes, replies, numbered rows,
/// and the columns of each row that have attributes ("07: 3-9 0;1;34").
std::string recordingPicture(Terminal& terminal);

}  // namespace zolt::vt::test
