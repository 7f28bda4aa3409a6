#include "app/AppDelegate.h"

#include <QApplication>
#include <utility>

#include "session/ShellManager.h"

namespace zolt {

namespace {

// Shows a window with the desktop's permission to take the focus (XDG Activation). Qt reads the token from the
// environment, and only while it shows a window.
void showWithToken(TerminalWindow& window, const std::string& token) {
  constexpr const char* kVariable = "XDG_ACTIVATION_TOKEN";
  const bool wasSet = qEnvironmentVariableIsSet(kVariable);
  const QByteArray before = qgetenv(kVariable);
  qputenv(kVariable, QByteArray::fromStdString(token));
  window.makeKeyAndOrderFront();
  wasSet ? qputenv(kVariable, before) : qunsetenv(kVariable);
}

}  // namespace

AppDelegate::AppDelegate(Config& config, UserDefaults& defaults, std::function<void(TerminalWindow&)> prepareWindow,
                         Environment environment)
    : m_config(config),
      m_defaults(defaults),
      m_prepareWindow(std::move(prepareWindow)),
      m_environment(std::move(environment)),
      m_updaterController(std::make_unique<UpdaterController>(true, defaults)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching(const TerminalLaunch& first) {
  m_config.setupDefaults();
  openWindow(first);
}

void AppDelegate::newWindow() {
  openWindow({});
}

TerminalWindow& AppDelegate::openWindow(const TerminalLaunch& launch) {
  auto window = createTerminalWindow(launch);
  if (launch.activationToken.empty()) {
    window->makeKeyAndOrderFront();
  } else {
    showWithToken(*window, launch.activationToken);
  }
  m_windows.push_back(std::move(window));
  return *m_windows.back();
}

std::unique_ptr<TerminalWindow> AppDelegate::createTerminalWindow(const TerminalLaunch& launch) {
  // The shell is started before the window is built, so that the prompt is there for the first frame.
  auto started = std::make_shared<std::unique_ptr<TerminalController>>(std::make_unique<TerminalController>(
      launch.shell, launch.restart, terminalSizeOfNewWindow(), launch.workingDirectory, m_environment));
  auto rootView =
      std::make_unique<ContentView>([started](const TerminalSize&) { return std::move(*started); }, m_defaults);
  const Shell& shell = launch.shell ? *launch.shell : ShellManager::shared().defaultShell();
  auto window =
      std::make_unique<TerminalWindow>(QStringLiteral("Zolt"), QString::fromStdString(shell.name),
                                       std::make_unique<TerminalWindowController>(std::move(rootView), m_environment));
  m_prepareWindow(*window);
  return window;
}

void AppDelegate::checkForUpdates() {
  m_updaterController->checkForUpdates();
}

bool AppDelegate::validate(const QByteArray& action) const {
  return action != "checkForUpdates" || m_updaterController->canCheckForUpdates();
}

void AppDelegate::newTab() {
  QWidget* key = QApplication::activeWindow();
  if (key == nullptr) {
    newWindow();
  } else if (auto* window = qobject_cast<TerminalWindow*>(key)) {
    window->contentViewController().addTab();
  }
}

}  // namespace zolt
