#pragma once

namespace zolt {

/// Opens onto the null device whichever of descriptors 0, 1 and 2 this process was started without. Otherwise the next
/// thing that is opened, such as the connection to the display, would be taken for a standard stream and written to.
/// The first thing in main().
void openMissingStandardStreams();

/// Sends the toolkit's messages to standard error without ever waiting for whoever reads it; by default a full pipe
/// there would stop the event loop.
void printToolkitMessagesWithoutWaiting();

}  // namespace zolt
