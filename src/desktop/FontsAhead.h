#pragma once

#include <thread>

namespace zolt {

/// Starts to read the configuration of the system's fonts on a thread of its own. Qt would do it on the main thread
/// when the first font is asked for; on a second core it costs the start nothing, because connecting to the display
/// takes as long. Whoever asks for a font before the thread has ended reads the configuration once more.
///
/// Where fonts are not configured by fontconfig, the returned thread has ended already.
std::jthread readFontConfigurationAhead();

}  // namespace zolt
