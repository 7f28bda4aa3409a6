#pragma once

#include "canvas/TextCanvas.h"
#include "vt/state/TerminalState.h"

namespace zolt {

/// Does what a program wants of the window that `canvas` is in, as far as the screen has room. The window's size in
/// cells is that of the canvas. Main thread.
void applyWindowRequest(const vt::WindowRequest& request, TextCanvas& canvas);

}  // namespace zolt
