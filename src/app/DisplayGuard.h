#pragma once

namespace zolt {

/// Between its making and `release`, a failure of the toolkit to open a display becomes one line on standard error and
/// exit status 1, instead of an abort. Main thread; made before the QApplication.
class DisplayGuard {
 public:
  DisplayGuard();
  ~DisplayGuard() { release(); }
  DisplayGuard(const DisplayGuard&) = delete;
  DisplayGuard& operator=(const DisplayGuard&) = delete;

  /// The display is open: messages go where they went before.
  void release();

 private:
  bool m_active = true;
};

}  // namespace zolt
