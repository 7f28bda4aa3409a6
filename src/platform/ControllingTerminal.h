#pragma once

namespace zolt {

/// Gives up the terminal that this process was started from, so that no child can prompt there. Control-C and Control-Z
/// there still reach this process, since they are sent to its process group.
///
/// Does nothing if this process leads its session, as when it is the only program of a terminal: giving up the terminal
/// would send SIGHUP to the whole session. Any thread, any number of times.
void leaveControllingTerminal();

}  // namespace zolt
