#include <unistd.h>
#include <QApplication>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "app/CommandLine.h"
#include "app/DisplayGuard.h"
#include "app/FirstWindow.h"
#include "platform/ChildProcess.h"
#include "platform/Pipe.h"

namespace {

constexpr int kUsageStatus = 2;
constexpr std::chrono::milliseconds kEndGrace{300};

int usageError(const std::string& reason) {
  std::fprintf(stderr, "zolt: %s\n", reason.c_str());
  return kUsageStatus;
}

int runApplication(int& argc, char** argv, const zolt::CommandLine& line) {
  zolt::DisplayGuard guard;
  QApplication application(argc, argv);
  guard.release();
  QApplication::setApplicationName(QStringLiteral("Zolt"));
  QApplication::setApplicationVersion(QStringLiteral(ZOLT_VERSION));

  std::unique_ptr<zolt::TerminalController> terminal;
  if (line.program.empty()) {
    terminal = std::make_unique<zolt::TerminalController>(std::nullopt);
  } else {
    terminal = std::make_unique<zolt::TerminalController>(zolt::shellForProgram(line.program),
                                                          zolt::TerminalController::Restart::Never);
  }
  const std::unique_ptr<zolt::ContentView> window = zolt::makeTerminalWindow(std::move(terminal));
  std::unique_ptr<zolt::ProgramRun> run;
  if (!line.program.empty()) run = std::make_unique<zolt::ProgramRun>(*window, line.screenshotFile);
  window->show();
  window->setFocus();
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  // Whoever reads our standard output may stop reading; that is no reason to close the terminals.
  zolt::ignoreBrokenPipes();
  const auto line = zolt::CommandLine::parse({argv + 1, argv + argc});
  if (!line) return usageError(line.reason());
  switch (line.value().action) {
    case zolt::CommandLine::Action::ShowHelp:
      std::fputs(zolt::CommandLine::helpText().c_str(), stdout);
      return 0;
    case zolt::CommandLine::Action::ShowVersion:
      std::fputs(zolt::CommandLine::versionText().c_str(), stdout);
      return 0;
    case zolt::CommandLine::Action::Run:
      break;
  }
  if (const auto& directory = line.value().workingDirectory; directory && chdir(directory->c_str()) != 0) {
    return usageError("cannot enter " + *directory + ": " + std::strerror(errno));
  }
  // Qt reads argv as well and knows options of its own: it gets none of ours.
  int ownArguments = 1;
  const int status = runApplication(ownArguments, argv, line.value());
  zolt::ChildProcess::endRemaining(kEndGrace);
  return status;
}
