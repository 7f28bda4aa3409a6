#pragma once

namespace zolt {

/// From construction to `release`, failing to open the display prints one line on standard error and exits with status
/// 1 instead of aborting. Main thread; construct it before the QApplication.
class DisplayGuard {
 public:
  DisplayGuard();
  ~DisplayGuard() { release(); }
  DisplayGuard(const DisplayGuard&) = delete;
  DisplayGuard& operator=(const DisplayGuard&) = delete;

  /// The display is open: restores the previous message handler.
  void release();

 private:
  bool m_active = true;
};

}  // namespace zolt
