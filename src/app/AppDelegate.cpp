#include "app/AppDelegate.h"

#include <QApplication>
#include <utility>

#include "session/ShellManager.h"

namespace zolt {

AppDelegate::AppDelegate(Config& config, UserDefaults& defaults, std::function<void(TerminalWindow&)> prepareWindow)
    : m_config(config), m_defaults(defaults), m_prepareWindow(std::move(prepareWindow)) {}

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
  window->makeKeyAndOrderFront();
  m_windows.push_back(std::move(window));
  return *m_windows.back();
}

std::unique_ptr<TerminalWindow> AppDelegate::createTerminalWindow(const TerminalLaunch& launch) {
  auto rootView = std::make_unique<ContentView>(
      [launch](const WindowSize& size) {
        return std::make_unique<TerminalController>(launch.shell, launch.restart, size, launch.workingDirectory);
      },
      m_defaults);
  auto window = std::make_unique<TerminalWindow>(QStringLiteral("Zolt"),
                                                 QString::fromStdString(ShellManager::shared().defaultShell().name),
                                                 std::make_unique<TerminalWindowController>(std::move(rootView)));
  m_prepareWindow(*window);
  return window;
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
