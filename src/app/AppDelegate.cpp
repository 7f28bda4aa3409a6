#include "app/AppDelegate.h"

#include <QApplication>
#include <utility>

#include "session/ShellManager.h"
#include "view/EmulationSurface.h"

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
      m_emulationSettings(std::make_unique<EmulationSettingsStore>(config, defaults)),
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

Display AppDelegate::displayOfNewWindow() const {
  if (m_display) return *m_display;
  return m_emulationSettings->isOn() ? Display::FullEmulation : Display::Log;
}

std::unique_ptr<TerminalWindow> AppDelegate::createTerminalWindow(const TerminalLaunch& launch) {
  const bool isFull = launch.display.value_or(displayOfNewWindow()) == Display::FullEmulation;
  const TerminalSize size =
      terminalSizeOfNewWindow(isFull ? emulationFont(m_emulationSettings->current()) : CanvasFont());
  // In the full emulation a shell that ends has ended.
  const auto restart = isFull ? TerminalController::Restart::Never : launch.restart;
  // The shell is started before the window is built, so that the prompt is there for the first frame.
  auto started = std::make_shared<std::unique_ptr<TerminalController>>(
      std::make_unique<TerminalController>(launch.shell, restart, size, launch.workingDirectory, m_environment));
  ContentView::MakeSurface makeSurface;
  if (isFull) {
    makeSurface = [this, size](TerminalController& terminal, QWidget* parent) {
      return std::make_unique<EmulationSurface>(terminal, size, *m_emulationSettings, parent);
    };
  }
  auto rootView = std::make_unique<ContentView>([started](const TerminalSize&) { return std::move(*started); },
                                                std::move(makeSurface), m_defaults);
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
