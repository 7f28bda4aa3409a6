#include "platform/PseudoTerminal.h"

#include <sys/ioctl.h>
#ifdef __APPLE__
#include <util.h>
#else
#include <pty.h>
#endif

#include <algorithm>
#include <cerrno>
#include <limits>
#include <mutex>

#include "platform/LaunchLock.h"
#include "platform/Pipe.h"

namespace zolt {

Result<PseudoTerminal> openPseudoTerminal() {
  // openpty cannot open with close-on-exec: no child may be launched between the two steps.
  const std::lock_guard lock(launchLock());
  int master = -1;
  int slave = -1;
  if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) return Failure{errorText(errno)};
  setCloseOnExec(master);
  setCloseOnExec(slave);
  return PseudoTerminal{.master = Descriptor(master), .slave = Descriptor(slave)};
}

bool setWindowSize(int terminal, const TerminalSize& size) {
  const auto clamped = [](int value) {
    return static_cast<unsigned short>(std::clamp(value, 0, int{std::numeric_limits<unsigned short>::max()}));
  };
  winsize native{};
  native.ws_row = clamped(size.rows);
  native.ws_col = clamped(size.columns);
  native.ws_xpixel = clamped(size.pixelWidth);
  native.ws_ypixel = clamped(size.pixelHeight);
  return ioctl(terminal, TIOCSWINSZ, &native) == 0;
}

}  // namespace zolt
