#include "app/AppDelegate.h"

#include <QApplication>
#include <QDir>
#include <algorithm>
#include <iterator>
#include <utility>

#include "app/EmulationWindowController.h"
#include "app/Questions.h"
#include "desktop/KeyRepeat.h"
#include "platform/ProcessFolder.h"
#include "platform/ProcessName.h"
#include "session/ShellManager.h"
#include "view/EmulationSurface.h"

namespace zolt {

namespace {

// Where the shell is, or else where it was started.
std::string folderOf(const PTYSession& session) {
  const auto shell = session.shellProcess();
  const std::string folder = shell ? processFolder(*shell) : std::string();
  return canEnter(folder) ? folder : session.workingDirectory;
}

TerminalTabs& tabsOf(TerminalWindow& window) {
  return static_cast<TerminalTabs&>(window.contentViewController().rootView().area());
}

}  // namespace

AppDelegate::AppDelegate(Config& config, UserDefaults& defaults, std::function<void(TerminalWindow&)> prepareWindow,
                         Environment environment, Clock& clock)
    : m_config(config),
      m_defaults(defaults),
      m_prepareWindow(std::move(prepareWindow)),
      m_environment(std::move(environment)),
      m_emulationSettings(std::make_unique<EmulationSettingsStore>(config, defaults)),
      m_panes(*m_emulationSettings, m_notifications, m_environment),
      m_closedTerminals(clock),
      m_updaterController(std::make_unique<UpdaterController>(true, defaults)) {}

AppDelegate::~AppDelegate() {
  for (const QPointer<TerminalWindow>& window : m_leaving) {
    delete window;
  }
}

void AppDelegate::keepSessionIn(const std::string& folder) {
  m_session = std::make_unique<SessionStore>(folder, *m_emulationSettings);
  connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, m_session.get(), &SessionStore::write);
}

void AppDelegate::applicationDidFinishLaunching(const TerminalLaunch& first) {
  m_config.setupDefaults();
  openFirst(first);
}

void AppDelegate::serviceDidFinishLaunching() {
  m_config.setupDefaults();
  m_awaitsFirst = true;
}

TerminalWindow& AppDelegate::openFirst(const TerminalLaunch& first) {
  const bool mayRestore = !first.shell && !first.program && !first.tab &&
                          first.display.value_or(displayOfNewWindow()) == Display::FullEmulation;
  TerminalWindow* restored = mayRestore ? restoreSession(first.activationToken) : nullptr;
  // A start from the desktop asks for no folder but the usual one.
  const bool isPlain = first.workingDirectory.empty() || first.workingDirectory == QDir::homePath().toStdString();
  if (restored != nullptr) return isPlain ? *restored : open(first, nullptr);
  const bool isChosen = m_display || first.display || first.isForProgram ||
                        m_defaults.stringForKey(kFullEmulationKey) || m_defaults.stringForKey(kDisplayChosenKey);
  return open(first, isChosen ? nullptr : std::make_unique<DisplayBar>());
}

void AppDelegate::newWindow() {
  TerminalWindow* key = keyFullWindow();
  openWindow({.workingDirectory = key == nullptr ? std::string() : tabsOf(*key).surface().folder()});
}

TerminalWindow& AppDelegate::openWindow(const TerminalLaunch& launch) {
  return std::exchange(m_awaitsFirst, false) ? openFirst(launch) : open(launch, nullptr);
}

TerminalWindow& AppDelegate::open(const TerminalLaunch& launch, std::unique_ptr<DisplayBar> bar) {
  auto window = createTerminalWindow(launch, std::move(bar));
  bringToFront(*window, launch.activationToken);
  m_windows.push_back(std::move(window));
  return *m_windows.back();
}

TerminalWindow* AppDelegate::restoreSession(const std::string& activationToken) {
  if (!m_session) return nullptr;
  TerminalWindow* front = nullptr;
  for (RestoredWindow& restored : m_session->restore(m_panes)) {
    auto first = std::make_shared<DetachedTab>(std::move(restored.tabs.front()));
    front = &open({.activationToken = activationToken,
                   .display = Display::FullEmulation,
                   .place = restored.place,
                   .tab = std::move(first),
                   .state = restored.state},
                  nullptr);
    TerminalTabs& tabs = tabsOf(*front);
    for (std::size_t i = 1; i < restored.tabs.size(); ++i) {
      tabs.insertTab(std::move(restored.tabs[i]), tabs.count());
    }
    tabs.setCurrentIndex(restored.current);
  }
  return front;
}

// The menu and the preferences are then those of that display, too.
void AppDelegate::setDisplayOfThisRun(std::optional<Display> display) {
  m_display = display;
  if (display) m_defaults.overrideForThisRun(kFullEmulationKey, *display == Display::FullEmulation ? "true" : "false");
}

// Qt reads the token from the environment, and only while it shows or activates a window.
void AppDelegate::bringToFront(TerminalWindow& window, const std::string& activationToken) {
  if (activationToken.empty()) return window.makeKeyAndOrderFront();
  constexpr const char* kVariable = "XDG_ACTIVATION_TOKEN";
  const bool wasSet = qEnvironmentVariableIsSet(kVariable);
  const QByteArray before = qgetenv(kVariable);
  qputenv(kVariable, QByteArray::fromStdString(activationToken));
  window.makeKeyAndOrderFront();
  wasSet ? qputenv(kVariable, before) : qunsetenv(kVariable);
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
  const CanvasFont font = isFull ? emulationFont(m_emulationSettings->current()) : CanvasFont();
  const auto whole = launch.place ? std::optional(launch.place->size()) : std::nullopt;
  // Once a window stands, fonts are loaded; a program that was given on the command line may ask for the size only
  // once.
  const bool mayRemember = m_windows.empty() && !launch.isForProgram && !launch.tab;
  const std::string basis = mayRemember ? whatTerminalSizeDependsOn(font, bar.get(), whole) : std::string();
  const std::optional<TerminalSize> remembered = mayRemember ? m_firstSize.find(basis) : std::nullopt;
  const TerminalSize size = remembered ? *remembered : terminalSizeOfNewWindow(font, bar.get(), whole);
  QString name;
  // The shell is started before the window is built, so that the prompt is there for the first frame.
  auto rootView = isFull ? makeFullContent(launch, size, name) : makeLogContent(launch, size, name);
  auto window = std::make_unique<TerminalWindow>(
      QStringLiteral("Zolt"), name, std::make_unique<TerminalWindowController>(std::move(rootView), m_environment),
      kind);
  if (mayRemember) m_firstSize.set(basis, terminalSizeOfNewWindow(font, bar.get(), whole));
  if (launch.place) window->setGeometry(*launch.place);
  window->setWindowState(launch.state);
  if (bar) offerDisplays(*window, std::move(bar));
  if (isFull) prepareFullEmulation(*window);
  m_prepareWindow(*window);
  return window;
}

std::unique_ptr<ContentView> AppDelegate::makeLogContent(const TerminalLaunch& launch, const TerminalSize& size,
                                                         QString& name) {
  const std::optional<Shell>& given = launch.program ? launch.program : launch.shell;
  const Shell shell = given ? *given : ShellManager::shared().defaultShell();
  name = QString::fromStdString(shell.name);
  auto started = std::make_shared<std::unique_ptr<TerminalController>>(
      std::make_unique<TerminalController>(shell, launch.restart, size, launch.workingDirectory, m_environment));
  return std::make_unique<ContentView>([started](const TerminalSize&) { return std::move(*started); }, m_defaults);
}

std::unique_ptr<ContentView> AppDelegate::makeFullContent(const TerminalLaunch& launch, const TerminalSize& size,
                                                          QString& name) {
  auto tab = launch.tab;
  if (!tab) {
    auto pane = m_panes.make({.shell = launch.shell,
                              .isForProgram = launch.isForProgram,
                              .program = launch.program,
                              .size = size,
                              .folder = launch.workingDirectory});
    tab = std::make_shared<DetachedTab>();
    tab->current = pane.get();
    tab->view = std::make_unique<SplitView>(*pane.release());
  }
  name = QString::fromStdString(tab->current->terminal().title());
  return std::make_unique<ContentView>(
      [this, tab, isForProgram = launch.isForProgram](const TerminalSize&) {
        TerminalTabs::MakePane makePane;
        if (!isForProgram) {
          makePane = [this](const TerminalTabs::NewPane& wanted) {
            return m_panes.make({.program = wanted.program,
                                 .size = m_panes.sizeIn(wanted.area, wanted.scale),
                                 .folder = wanted.folder});
          };
        }
        auto tabs = std::make_unique<TerminalTabs>(std::move(makePane));
        tabs->insertTab(std::move(*tab), 0);
        return tabs;
      },
      m_defaults);
}

void AppDelegate::prepareFullEmulation(TerminalWindow& window) {
  askForKeyRepeatsWithoutReleases();
  auto* controller = new EmulationWindowController(window, *m_emulationSettings, m_closedTerminals);
  m_launcher.follow(controller->tabs());
  if (window.kind().isForProgram) return;
  connect(controller, &EmulationWindowController::closed, this, [this, &window] { keepClosed(window); });
  connect(controller, &EmulationWindowController::over, this, [this, &window] { forget(window); });
  connect(&controller->tabs(), &TerminalTabs::windowWanted, this,
          [this, controller, &window](int index, std::optional<QPoint> at) {
            if (controller->tabs().count() == 1) return;
            const QSize size = window.size();
            openTab(controller->tabs().takeTab(index), at ? std::optional(QRect(*at, size)) : std::nullopt);
          });
}

void AppDelegate::openTab(DetachedTab tab, std::optional<QRect> place) {
  openWindow({.display = Display::FullEmulation, .place = place, .tab = std::make_shared<DetachedTab>(std::move(tab))});
}

void AppDelegate::keepClosed(TerminalWindow& window) {
  const auto found = std::ranges::find(m_windows, &window, &std::unique_ptr<TerminalWindow>::get);
  if (found == m_windows.end()) return;
  ClosedTerminals::Window closed{.window = std::move(*found)};
  m_windows.erase(found);
  m_closedTerminals.keep(std::move(closed), keptFor(m_emulationSettings->current()));
}

void AppDelegate::reopenClosed() {
  auto closed = m_closedTerminals.takeLast();
  if (!closed) return;
  if (auto* window = std::get_if<ClosedTerminals::Window>(&*closed)) {
    m_windows.push_back(std::move(window->window));
    m_windows.back()->makeKeyAndOrderFront();
    return;
  }
  auto* pane = std::get_if<ClosedTerminals::Pane>(&*closed);
  auto* tab = std::get_if<ClosedTerminals::Tab>(&*closed);
  TerminalTabs* area = pane != nullptr ? pane->area : tab->area;
  // The tab that the split was in may be in another window now.
  if (pane != nullptr && pane->pane.from) area = qobject_cast<TerminalTabs*>(pane->pane.from->parentWidget());
  const bool isThere = area != nullptr && area->isVisible();
  if (!isThere) {
    DetachedTab whole = tab != nullptr ? std::move(tab->tab) : DetachedTab();
    if (pane != nullptr) {
      whole.current = pane->pane.pane.get();
      whole.view = std::make_unique<SplitView>(*pane->pane.pane.release());
    }
    return openTab(std::move(whole), std::nullopt);
  }
  if (pane != nullptr) {
    area->putBack(std::move(pane->pane));
  } else {
    area->insertTab(std::move(tab->tab), tab->index);
  }
  static_cast<TerminalWindow*>(area->window())->makeKeyAndOrderFront();
}

TerminalWindow* AppDelegate::keyFullWindow() const {
  auto* window = qobject_cast<TerminalWindow*>(QApplication::activeWindow());
  const bool isFull = window != nullptr && window->kind().display == Display::FullEmulation;
  return isFull && !window->kind().isForProgram ? window : nullptr;
}

std::vector<TerminalWindow*> AppDelegate::fullWindows() const {
  std::vector<TerminalWindow*> windows;
  for (const auto& window : m_windows) {
    const bool isFull = window->kind().display == Display::FullEmulation;
    if (isFull && !window->kind().isForProgram) windows.push_back(window.get());
  }
  return windows;
}

void AppDelegate::mergeAllWindows() {
  TerminalWindow* key = keyFullWindow();
  if (key == nullptr) return;
  TerminalTabs& into = tabsOf(*key);
  for (TerminalWindow* window : fullWindows()) {
    if (window == key) continue;
    while (tabsOf(*window).count() > 0) {
      into.insertTab(tabsOf(*window).takeTab(0), into.count());
    }
  }
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
  forget(window);  // what was replaced cannot be reopened
  window.closeNow();
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

void AppDelegate::quit() {
  std::vector<std::string> programs;
  for (const auto& window : m_windows) {
    if (window->kind().display != Display::FullEmulation) continue;
    std::ranges::move(runningPrograms(tabsOf(*window).panes()), std::back_inserter(programs));
  }
  if (programs.empty() || !m_emulationSettings->current().warnBeforeClosing) return quitNow();
  QWidget* over = QApplication::activeWindow();
  if (over == nullptr) over = m_windows.back().get();
  askBeforeQuitting(*over, programs, [this] { quitNow(); });
}

void AppDelegate::quitNow() {
  if (m_session) m_session->capture(fullWindows());
  for (const auto& window : m_windows) {
    window->setCloseCheck(nullptr);
  }
  QCoreApplication::quit();
}

void AppDelegate::checkForUpdates() {
  m_updaterController->checkForUpdates();
}

bool AppDelegate::validate(const QByteArray& action) const {
  if (action == "checkForUpdates") return m_updaterController->canCheckForUpdates();
  if (action == "reopenClosed") return !m_closedTerminals.empty();
  if (action == "mergeAllWindows") return keyFullWindow() != nullptr && fullWindows().size() > 1;
  return true;
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
