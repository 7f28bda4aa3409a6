#pragma once

#include <string>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// A recording's screen as its golden has it, to be read by people: the cursor, the title, modes, what was answered,
/// the rows with their numbers, and below them where on a row something has a look ("07: 3-9 0;1;34").
std::string recordingPicture(Terminal& terminal);

}  // namespace zolt::vt::test
