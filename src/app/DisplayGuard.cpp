#include "app/DisplayGuard.h"

#include <QtGlobal>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/Diagnostics.h"

namespace zolt {

namespace {

QtMessageHandler previousHandler = nullptr;

std::string valueOf(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0' ? value : "not set";
}

// The toolkit reports a missing display as a fatal message and aborts after its handler returns: it does not return.
void reportMissingDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type == QtFatalMsg) {
    printErrorLine("zolt: cannot open a display (DISPLAY=" + valueOf("DISPLAY") + ", WAYLAND_DISPLAY=" +
                   valueOf("WAYLAND_DISPLAY") + ", QT_QPA_PLATFORM=" + valueOf("QT_QPA_PLATFORM") + ")");
    std::_Exit(EXIT_FAILURE);
  }
  // Warnings before that say the same at length.
  if (type == QtDebugMsg && previousHandler != nullptr) previousHandler(type, context, message);
}

}  // namespace

DisplayGuard::DisplayGuard() {
  previousHandler = qInstallMessageHandler(reportMissingDisplay);
}

void DisplayGuard::release() {
  if (std::exchange(m_active, false)) qInstallMessageHandler(previousHandler);
}

}  // namespace zolt
