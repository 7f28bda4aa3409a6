#pragma once

#include <mutex>

namespace zolt {

/// Held while launching a child, and while opening a descriptor that cannot be created with close-on-exec.
inline std::mutex& launchLock() {
  static std::mutex mutex;
  return mutex;
}

}  // namespace zolt
