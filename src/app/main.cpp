#include <unistd.h>

#include <QApplication>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <thread>

#include "app/CommandLine.h"
#include "app/DisplayGuard.h"
#include "app/MessageClient.h"
#include "app/ProgramRun.h"
#include "app/SingleInstance.h"
#include "app/StandardStreams.h"
#include "app/WindowMessages.h"
#include "app/ZoltApp.h"
#include "base/Diagnostics.h"
#include "brew/BrewCommand.h"
#include "desktop/DesktopApplication.h"
#include "desktop/DesktopPalette.h"
#include "desktop/FontsAhead.h"
#include "platform/ChildProcess.h"
#include "platform/Environment.h"
#include "platform/MainQueue.h"
#include "platform/Pipe.h"
#include "platform/StateFolder.h"
#include "platform/TerminationSignals.h"

namespace {

constexpr int kUsageStatus = 2;
// The name of the desktop file, and of the application on the session bus.
const QString kApplicationId = QStringLiteral("org.zolt.Zolt");
// How long shells that ignore SIGTERM may take once the windows are gone.
constexpr std::chrono::milliseconds kEndGrace{1000};

std::string homeFolder() {
  return qEnvironmentVariable("HOME").toStdString();
}

// What the bus has set up for a program that it starts is not for the shells.
void prepareService(zolt::CommandLine& options, zolt::Environment& environment) {
  for (const char* name : {"DBUS_STARTER_ADDRESS", "DBUS_STARTER_BUS_TYPE"}) {
    environment.erase(name);
  }
  if (!options.workingDirectory && !homeFolder().empty()) options.workingDirectory = homeFolder();
}

int usageError(const std::string& reason) {
  zolt::printErrorLine("zolt: " + reason);
  return kUsageStatus;
}

std::string currentDirectory() {
  std::error_code ignored;
  return std::filesystem::current_path(ignored).string();
}

// A request from another process: a window in its working directory.
void open(zolt::AppDelegate& delegate, const zolt::OpenRequest& request) {
  std::error_code ignored;
  const bool exists = std::filesystem::is_directory(request.workingDirectory, ignored);
  delegate.openWindow({.shell = std::nullopt,
                       .workingDirectory = exists ? request.workingDirectory : "",
                       .activationToken = request.activationToken,
                       .display = request.display});
}

// Windows that the desktop asks for begin at home, wherever this process does.
std::unique_ptr<zolt::DesktopApplication> onTheBus(zolt::AppDelegate& delegate, zolt::WindowMessages& messages) {
  auto bus = std::make_unique<zolt::DesktopApplication>(kApplicationId);
  const auto openIn = [&delegate](const std::string& folder, const QString& token) {
    open(delegate, {.workingDirectory = folder, .activationToken = token.toStdString()});
  };
  QObject::connect(bus.get(), &zolt::DesktopApplication::windowWanted, bus.get(),
                   [openIn](const QString& token) { openIn(homeFolder(), token); });
  QObject::connect(bus.get(), &zolt::DesktopApplication::folderWanted, bus.get(),
                   [openIn](const QString& folder, const QString& token) { openIn(folder.toStdString(), token); });
  // Where no window has tabs, a window.
  QObject::connect(bus.get(), &zolt::DesktopApplication::tabWanted, bus.get(),
                   [openIn, &messages](const QString& token) {
                     if (!messages.addTab(homeFolder(), token.toStdString())) openIn(homeFolder(), token);
                   });
  return bus;
}

int runApplication(int& argc, char** argv, const zolt::CommandLine& line, zolt::SingleInstance& instance,
                   const zolt::Environment& environment) {
  std::jthread fonts = zolt::readFontConfigurationAhead();
  zolt::DisplayGuard guard;
  QApplication application(argc, argv);
  guard.release();
  if (fonts.joinable()) fonts.join();  // the first window asks for fonts
  QApplication::setApplicationName(QStringLiteral("Zolt"));
  QApplication::setApplicationVersion(QStringLiteral(ZOLT_VERSION));
  QGuiApplication::setDesktopFileName(kApplicationId);

  zolt::ZoltApp zoltApp(zolt::Config::shared(), zolt::UserDefaults::standard(), environment);
  zolt::AppDelegate& delegate = zoltApp.appDelegate();
  delegate.setDisplayOfThisRun(line.display);
  if (instance.isFirst() && line.program.empty() && !zolt::stateFolder().empty()) {
    delegate.keepSessionIn(zolt::stateFolder() + "/session");
  }
  const zolt::TerminationSignals signals([&delegate] { delegate.quitNow(); });

  std::unique_ptr<zolt::ProgramRun> run;
  bool closed = false;
  if (line.isService && instance.isFirst()) {
    delegate.serviceDidFinishLaunching();
  } else if (line.program.empty()) {
    // A folder that was asked for gets a window besides those of the last session.
    delegate.applicationDidFinishLaunching({.workingDirectory = line.workingDirectory ? currentDirectory() : ""});
  } else {
    delegate.applicationDidFinishLaunching({.shell = zolt::shellForProgram(line.program),
                                            .restart = zolt::TerminalController::Restart::Never,
                                            .workingDirectory = {},
                                            .isForProgram = true});
    run = std::make_unique<zolt::ProgramRun>(*delegate.windows().front(), line.screenshotFile);
    // With -e this process exists for that one window.
    QObject::connect(&application, &QApplication::lastWindowClosed, &application, [&closed] {
      closed = true;
      QApplication::quit();
    });
  }
  zolt::WindowMessages messages(delegate, zolt::Config::shared(), zolt::UserDefaults::standard());
  if (instance.isFirst()) {
    instance.serve([&delegate](const zolt::OpenRequest& request) { open(delegate, request); },
                   [&messages](const zolt::Message& message) { return messages.answer(message); });
  }

  // Not needed for the first frame.
  std::unique_ptr<zolt::DesktopPalette> palette;
  std::unique_ptr<zolt::DesktopApplication> bus;
  zolt::MainQueue::async(zolt::MainQueue::Owner(&application), [&] {
    if (instance.isFirst()) bus = onTheBus(delegate, messages);
    palette = std::make_unique<zolt::DesktopPalette>();
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/zolt/zolt.svg")));
  });
  QObject::connect(&application, &QCoreApplication::aboutToQuit, &application, &zolt::endBrewCommands);
  const int status = QApplication::exec();
  zolt::TerminationSignals::ignoreFromNow();
  return run && (closed || status == 0) ? run->exitStatus() : status;
}

}  // namespace

int main(int argc, char** argv) {
  zolt::openMissingStandardStreams();
  zolt::printToolkitMessagesWithoutWaiting();
  // What the shells inherit. Copied first: Qt unsets variables that it has read (DESKTOP_STARTUP_ID).
  zolt::Environment environment = zolt::processEnvironment();
  // If the reader of our standard output goes away, SIGPIPE must not close the terminals.
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
    case zolt::CommandLine::Action::SendMessage:
      return zolt::runMessage(line.value().message);
    case zolt::CommandLine::Action::Run:
      break;
  }
  zolt::CommandLine& options = line.value();
  // A relative file name is relative to the user's current directory, whatever --working-directory says.
  if (options.screenshotFile) {
    std::error_code ignored;
    options.screenshotFile = std::filesystem::absolute(*options.screenshotFile, ignored).string();
  }
  if (options.isService) prepareService(options, environment);
  if (const auto& directory = options.workingDirectory; directory && chdir(directory->c_str()) != 0) {
    return usageError("cannot change to " + *directory + ": " + std::strerror(errno));
  }
  const bool shared = options.program.empty() && !options.newInstance;
  zolt::SingleInstance instance(shared ? zolt::SingleInstance::defaultRuntimeFolder() : "");
  const zolt::OpenRequest request{.workingDirectory = currentDirectory(),
                                  .activationToken = qEnvironmentVariable("XDG_ACTIVATION_TOKEN").toStdString(),
                                  .display = options.display};
  if (shared && instance.claim(request) == zolt::SingleInstance::Outcome::Forwarded) return 0;

  // Qt parses argv too and has options of its own, so it gets only argv[0].
  int ownArguments = 1;
  const int status = runApplication(ownArguments, argv, options, instance, environment);
  zolt::ChildProcess::endRemaining(kEndGrace);
  return status;
}
