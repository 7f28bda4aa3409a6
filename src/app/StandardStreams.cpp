#include "app/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

#include <QString>
#include <QtGlobal>
#include <array>
#include <cerrno>

#include "base/Diagnostics.h"

namespace zolt {

namespace {

struct Stream {
  int descriptor;
  int access;
};

// In ascending order: open() returns the lowest free number.
constexpr std::array kStreams{
    Stream{STDIN_FILENO, O_RDONLY},
    Stream{STDOUT_FILENO, O_WRONLY},
    Stream{STDERR_FILENO, O_WRONLY},
};

// Qt says so of every font that it tries for a letter of a script that the font cannot shape. Any program can print
// such letters, and nobody can do anything about the fonts.
constexpr QLatin1String kAboutFonts("  OpenType support missing for ");

void printMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  if (message.startsWith(kAboutFonts)) return;
  printErrorLine(qFormatLogMessage(type, context, message).toStdString());
}

}  // namespace

void openMissingStandardStreams() {
  for (const Stream& stream : kStreams) {
    const bool isMissing = fcntl(stream.descriptor, F_GETFD) < 0 && errno == EBADF;
    if (isMissing) static_cast<void>(open("/dev/null", stream.access));
  }
}

void printToolkitMessagesWithoutWaiting() {
  qInstallMessageHandler(printMessage);
}

}  // namespace zolt
