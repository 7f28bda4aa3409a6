#include "desktop/SessionBus.h"

#include <QFileInfo>
#include <QtGlobal>

namespace zolt {

bool hasSessionBus() {
  return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
         QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

}  // namespace zolt
