#pragma once

namespace zolt {

/// Opens /dev/null on whichever of descriptors 0, 1 and 2 this process was started without. Otherwise the next file
/// opened, such as the connection to the display, would get that number and be written to as a standard stream. Call
/// first in main().
void openMissingStandardStreams();

/// Prints Qt's messages to standard error without ever waiting for its reader; by default a full pipe there would block
/// the event loop.
void printToolkitMessagesWithoutWaiting();

}  // namespace zolt
