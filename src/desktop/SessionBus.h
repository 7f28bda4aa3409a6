#pragma once

namespace zolt {

/// Whether there is a session bus to connect to. Without one, the library would start a bus.
bool hasSessionBus();

}  // namespace zolt
