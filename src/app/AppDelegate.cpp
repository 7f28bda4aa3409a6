#include "app/AppDelegate.h"

#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <utility>

#include "app/EmulationWindowController.h"
#include "app/NewShell.h"
#include "app/Questions.h"
#include "platform/ProcessFolder.h"
#include "platform/ProcessName.h"
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

// Where the shell is, or else where it was started.
std::string folderOf(const PTYSession& session) {
  const auto shell = session.shellProcess();
  const std::string folder = shell ? processFolder(*shell) : std::string();
  return folder.empty() || access(folder.c_str(), X_OK) != 0 ? session.workingDirectory : folder;
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

AppDelegate::~AppDelegate() {
  for (const QPointer<TerminalWindow>& window : m_leaving) {
    delete window;
  }
}

void AppDelegate::applicationDidFinishLaunching(const TerminalLaunch& first) {
  m_config.setupDefaults();
  const bool isChosen = m_display || first.display || first.isForProgram ||
                        m_defaults.stringForKey(kFullEmulationKey) || m_defaults.stringForKey(kDisplayChosenKey);
  open(first, isChosen ? nullptr : std::make_unique<DisplayBar>());
}

void AppDelegate::newWindow() {
  openWindow({});
}

TerminalWindow& AppDelegate::openWindow(const TerminalLaunch& launch) {
  return open(launch, nullptr);
}

TerminalWindow& AppDelegate::open(const TerminalLaunch& launch, std::unique_ptr<DisplayBar> bar) {
  auto window = createTerminalWindow(launch, std::move(bar));
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

std::unique_ptr<TerminalWindow> AppDelegate::createTerminalWindow(const TerminalLaunch& launch,
                                                                  std::unique_ptr<DisplayBar> bar) {
  const TerminalWindowKind kind{.display = launch.display.value_or(displayOfNewWindow()),
                                .isForProgram = launch.isForProgram};
  const bool isFull = kind.display == Display::FullEmulation;
  const EmulationSettings settings = isFull ? m_emulationSettings->current() : EmulationSettings();
  const TerminalSize size = terminalSizeOfNewWindow(isFull ? emulationFont(settings) : CanvasFont(), bar.get(),
                                                    launch.place ? std::optional(launch.place->size()) : std::nullopt);
  const NewShell chosen = isFull && !launch.shell ? newShell(settings.startupShell, ShellManager::shared())
                                                  : NewShell{.shell = ShellManager::shared().defaultShell()};
  const Shell& shell = launch.shell ? *launch.shell : chosen.shell;
  // In the full emulation a shell that ends has ended.
  const auto restart = isFull ? TerminalController::Restart::Never : launch.restart;
  // The shell is started before the window is built, so that the prompt is there for the first frame.
  auto started = std::make_shared<std::unique_ptr<TerminalController>>(
      std::make_unique<TerminalController>(shell, restart, size, launch.workingDirectory, m_environment));
  ContentView::MakeSurface makeSurface;
  if (isFull) {
    makeSurface = [this, size](TerminalController& terminal, QWidget* parent) {
      return std::make_unique<EmulationSurface>(terminal, size, *m_emulationSettings, parent);
    };
  }
  auto rootView = std::make_unique<ContentView>([started](const TerminalSize&) { return std::move(*started); },
                                                std::move(makeSurface), m_defaults);
  auto window = std::make_unique<TerminalWindow>(
      QStringLiteral("Zolt"), QString::fromStdString(shell.name),
      std::make_unique<TerminalWindowController>(std::move(rootView), m_environment), kind);
  if (launch.place) window->setGeometry(*launch.place);
  if (bar) offerDisplays(*window, std::move(bar));
  if (isFull) prepareFullEmulation(*window, settings, chosen.isRefused);
  m_prepareWindow(*window);
  return window;
}

void AppDelegate::prepareFullEmulation(TerminalWindow& window, const EmulationSettings& settings, bool isRefused) {
  auto& surface = static_cast<EmulationSurface&>(window.contentViewController().rootView().surface());
  if (isRefused) {
    surface.addFirstNotice(tr("“%1” is not a program that can be run. This is %2, the default shell.")
                               .arg(QString::fromStdString(settings.startupShell), window.subtitle()));
  }
  auto* controller = new EmulationWindowController(window, *m_emulationSettings);
  if (window.kind().isForProgram) return;
  controller->typeFirst(settings.startupCommand);
  connect(&window, &TerminalWindow::closed, this, [this, &window] { forget(window); });
}

void AppDelegate::offerDisplays(TerminalWindow& window, std::unique_ptr<DisplayBar> bar) {
  ContentView& content = window.contentViewController().rootView();
  connect(bar.get(), &DisplayBar::fullEmulationChosen, this, [this, &window] { useFullEmulation(window); });
  connect(bar.get(), &DisplayBar::logChosen, this, [this] { m_defaults.setBool(kDisplayChosenKey, true); });
  // The choice may also be made in the menu.
  connect(&m_defaults, &UserDefaults::changed, bar.get(), [&content](const std::string& key) {
    if (key == kFullEmulationKey || key == kDisplayChosenKey) content.setFooter(nullptr);
  });
  content.setFooter(std::move(bar));
}

void AppDelegate::useFullEmulation(TerminalWindow& inPlaceOf) {
  const auto use = [this, &inPlaceOf] {
    replace(inPlaceOf, Display::FullEmulation);
    m_defaults.setBool(kFullEmulationKey, true);
    m_defaults.setBool(kDisplayChosenKey, true);
  };
  const auto program = inPlaceOf.contentViewController().rootView().terminal().ptySession().foregroundProgram();
  if (program) {
    askBeforeEnding(inPlaceOf, processName(*program), use);
  } else {
    use();
  }
}

void AppDelegate::toggleFullEmulation() {
  const Display display = m_emulationSettings->isOn() ? Display::Log : Display::FullEmulation;
  m_display.reset();  // the latest choice counts
  m_defaults.setBool(kFullEmulationKey, display == Display::FullEmulation);
  auto* window = qobject_cast<TerminalWindow*>(QApplication::activeWindow());
  if (window == nullptr || window->kind().isForProgram || window->kind().display == display) return;
  askBeforeReplacing(*window, display, [this, window, display] { replace(*window, display); });
}

bool AppDelegate::isOn(const QByteArray& action) const {
  return action == "toggleFullEmulation" && m_emulationSettings->isOn();
}

void AppDelegate::replace(TerminalWindow& window, Display display) {
  open({.workingDirectory = folderOf(window.contentViewController().rootView().terminal().ptySession()),
        .display = display,
        .place = window.geometry()},
       nullptr);
  window.closeNow();
  forget(window);
}

// A window that is gone for good ends its terminal with itself.
void AppDelegate::forget(TerminalWindow& window) {
  const auto found = std::ranges::find(m_windows, &window, &std::unique_ptr<TerminalWindow>::get);
  if (found == m_windows.end()) return;
  static_cast<void>(found->release());
  m_windows.erase(found);
  std::erase_if(m_leaving, [](const QPointer<TerminalWindow>& each) { return each.isNull(); });
  m_leaving.emplace_back(&window);
  window.deleteLater();
}

std::vector<std::string> AppDelegate::runningPrograms() const {
  std::vector<std::string> names;
  for (const auto& window : m_windows) {
    if (window->kind().display != Display::FullEmulation || window->kind().isForProgram) continue;
    PTYSession& session = window->contentViewController().rootView().terminal().ptySession();
    if (const auto program = session.foregroundProgram()) names.push_back(processName(*program));
  }
  return names;
}

void AppDelegate::quit() {
  const std::vector<std::string> programs = runningPrograms();
  if (programs.empty() || !m_emulationSettings->current().warnBeforeClosing) return quitNow();
  QWidget* over = QApplication::activeWindow();
  if (over == nullptr) over = m_windows.back().get();
  askBeforeQuitting(*over, programs, [this] { quitNow(); });
}

void AppDelegate::quitNow() {
  for (const auto& window : m_windows) {
    window->setCloseCheck(nullptr);
  }
  QCoreApplication::quit();
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
