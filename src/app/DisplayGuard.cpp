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

// Qt reports a missing display as a fatal message and aborts when the handler returns, so this one exits instead.
void reportMissingDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type == QtFatalMsg) {
    printErrorLine("zolt: cannot open a display (DISPLAY=" + valueOf("DISPLAY") + ", WAYLAND_DISPLAY=" +
                   valueOf("WAYLAND_DISPLAY") + ", QT_QPA_PLATFORM=" + valueOf("QT_QPA_PLATFORM") + ")");
    std::_Exit(EXIT_FAILURE);
  }
  // The warnings before it say the same at greater length.
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
