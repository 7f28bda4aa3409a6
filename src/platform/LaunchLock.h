#pragma once

#include <mutex>

namespace zolt {

/// Held while a child is launched, and by whoever opens a descriptor that cannot be born with close-on-exec.
inline std::mutex& launchLock() {
  static std::mutex mutex;
  return mutex;
}

}  // namespace zolt
