#include <unistd.h>
#include <QApplication>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
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
    terminal = std::make_unique<zolt::TerminalController>(std::nullopt, zolt::TerminalController::Restart::AfterFailure,
                                                          zolt::terminalSizeOfNewWindow());
  } else {
    terminal = std::make_unique<zolt::TerminalController>(
        zolt::shellForProgram(line.program), zolt::TerminalController::Restart::Never, zolt::terminalSizeOfNewWindow());
  }
  const std::unique_ptr<zolt::ContentView> window = zolt::makeTerminalWindow(std::move(terminal));
  std::unique_ptr<zolt::ProgramRun> run;
  if (!line.program.empty()) run = std::make_unique<zolt::ProgramRun>(*window, line.screenshotFile);
  window->show();
  window->setFocus();
  bool closed = false;
  QObject::connect(&application, &QApplication::lastWindowClosed, [&] { closed = true; });
  const int status = QApplication::exec();
  return closed && run ? run->exitStatus() : status;
}

}  // namespace

int main(int argc, char** argv) {
  // Whoever reads our standard output may stop reading; that is no reason to close the terminals.
  zolt::ignoreBrokenPipes();
  auto line = zolt::CommandLine::parse({argv + 1, argv + argc});
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
  zolt::CommandLine& options = line.value();
  // A relative name means the folder that the user is in, whatever --working-directory says.
  if (options.screenshotFile) {
    std::error_code ignored;
    options.screenshotFile = std::filesystem::absolute(*options.screenshotFile, ignored).string();
  }
  if (const auto& directory = options.workingDirectory; directory && chdir(directory->c_str()) != 0) {
    return usageError("cannot enter " + *directory + ": " + std::strerror(errno));
  }
  // Qt reads argv as well and knows options of its own: it gets none of ours.
  int ownArguments = 1;
  const int status = runApplication(ownArguments, argv, options);
  zolt::ChildProcess::endRemaining(kEndGrace);
  return status;
}
