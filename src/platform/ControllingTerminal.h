#pragma once

namespace zolt {

/// Gives up the terminal that this process was started from, so that no child can ask questions there. Control-C and
/// Control-Z there still reach this process: they go by its process group.
///
/// Does nothing where this process leads its session, as when a terminal was told to run it as its only program: giving
/// up the terminal would hang it up. Any thread, any number of times.
void leaveControllingTerminal();

}  // namespace zolt
