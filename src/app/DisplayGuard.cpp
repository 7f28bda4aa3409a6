#include "app/DisplayGuard.h"

#include <QtGlobal>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace zolt {

namespace {

QtMessageHandler previousHandler = nullptr;

const char* nameOr(const char* variable, const char* fallback) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != '\0' ? value : fallback;
}

// The toolkit reports a missing display as a fatal message and aborts after its handler returns: it does not return.
void reportMissingDisplay(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (type == QtFatalMsg) {
    std::fprintf(stderr, "zolt: cannot open a display (DISPLAY=%s, WAYLAND_DISPLAY=%s, QT_QPA_PLATFORM=%s)\n",
                 nameOr("DISPLAY", "not set"), nameOr("WAYLAND_DISPLAY", "not set"),
                 nameOr("QT_QPA_PLATFORM", "not set"));
    std::fflush(stderr);
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
