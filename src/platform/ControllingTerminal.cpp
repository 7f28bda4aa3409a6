#include "platform/ControllingTerminal.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "platform/Descriptor.h"

namespace zolt {

void leaveControllingTerminal() {
  if (getsid(0) == getpid()) return;
  const Descriptor terminal(open("/dev/tty", O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (terminal) ioctl(terminal.get(), TIOCNOTTY);
}

}  // namespace zolt
