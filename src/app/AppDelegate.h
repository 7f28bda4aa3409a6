#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/ClosedTerminals.h"
#include "app/Display.h"
#include "app/LauncherProgress.h"
#include "app/PaneMaker.h"
#include "app/RememberedSize.h"
#include "app/SessionStore.h"
#include "app/TerminalWindow.h"
#include "platform/CacheFolder.h"
#include "platform/Environment.h"
#include "settings/Config.h"
#include "settings/EmulationSettingsStore.h"
#include "updates/views/UpdaterController.h"
#include "view/DisplayBar.h"

namespace zolt {

/// A request for a terminal window. It runs the default shell unless one is given.
struct TerminalLaunch {
  std::optional<Shell> shell{};
  TerminalController::Restart restart = TerminalController::Restart::AfterFailure;
  std::string workingDirectory{};      ///< this process's if empty
  std::string activationToken{};       ///< lets the window take the focus (XDG Activation); empty if there is none
  std::optional<Display> display{};    ///< otherwise as chosen for this run, or in the settings
  std::optional<QRect> place{};        ///< on the screen, without the frame; otherwise that of every new window
  bool isForProgram = false;           ///< `shell` is a program that was given on the command line
  std::optional<Shell> program{};      ///< in place of a shell, in a window like any other
  std::shared_ptr<DetachedTab> tab{};  ///< shown in the full emulation, instead of a new terminal
  Qt::WindowStates state{};
};

/// Opens terminal windows and owns them: those of the log display even after they are closed, until the application
/// quits. Performs the actions "newWindow", "newTab", "reopenClosed", "mergeAllWindows", "toggleFullEmulation",
/// "checkForUpdates" and "quit". Main thread.
class AppDelegate : public QObject {
  Q_OBJECT

 public:
  /// `prepareWindow` is called for each new window before it is first shown, to attach the menus and the like.
  /// `config`, `defaults` and `clock` must outlive the delegate. Every shell inherits `environment`. The update service
  /// is started as soon as the delegate exists.
  AppDelegate(Config& config, UserDefaults& defaults, std::function<void(TerminalWindow&)> prepareWindow,
              Environment environment = processEnvironment(), Clock& clock = Clock::steady());
  ~AppDelegate() override;

  /// What windows show in this run, whatever the settings say.
  void setDisplayOfThisRun(std::optional<Display> display);
  /// What a new window shows.
  Display displayOfNewWindow() const;

  /// Windows of the full emulation come back at the next start: they are kept in this folder when the application
  /// quits. Called before it has launched; otherwise nothing is kept.
  void keepSessionIn(const std::string& folder);

  /// Loads the settings and opens the windows of the last session, or the first window. As long as the user has never
  /// chosen a display, that window has a bar that offers both.
  void applicationDidFinishLaunching(const TerminalLaunch& first = {});
  /// Loads the settings. The first window is opened once somebody asks for one, with the bar as above.
  void serviceDidFinishLaunching();
  /// Always false, deliberately: the application keeps running without windows and opens one on request.
  static bool applicationShouldTerminateAfterLastWindowClosed() { return false; }

  /// In the folder of the key window's terminal, if that is of the full emulation.
  Q_INVOKABLE void newWindow();
  /// Adds a terminal to the key window; opens a window if there is none; does nothing if it is not a terminal window.
  Q_INVOKABLE void newTab();
  /// Brings back what was closed last in the full emulation, its shells alive.
  Q_INVOKABLE void reopenClosed();
  /// Moves the tabs of all windows of the full emulation into the key window.
  Q_INVOKABLE void mergeAllWindows();
  /// Stores whether windows to come use the full emulation, and offers to replace the key window if that shows the
  /// other display.
  Q_INVOKABLE void toggleFullEmulation();
  /// Whether a checkable action is on.
  Q_INVOKABLE bool isOn(const QByteArray& action) const;
  /// Quits, after a question where a program runs in the foreground of a window of the full emulation.
  Q_INVOKABLE void quit();
  /// Quits without a question.
  void quitNow();
  /// Asks the update service to check now; the service shows its own windows.
  Q_INVOKABLE void checkForUpdates();
  /// Whether an action is available now: no update check while another is in progress, and the like.
  Q_INVOKABLE bool validate(const QByteArray& action) const;

  /// Opens a window in front of the others.
  TerminalWindow& openWindow(const TerminalLaunch& launch);
  /// Shows a window in front of the others, with the desktop's permission to take the focus (XDG Activation) if
  /// `activationToken` is not empty.
  static void bringToFront(TerminalWindow& window, const std::string& activationToken);

  /// Every window ever opened, in order, but those of the full emulation that were closed, and those that were
  /// replaced.
  const std::vector<std::unique_ptr<TerminalWindow>>& windows() const { return m_windows; }
  UpdaterController& updaterController() { return *m_updaterController; }

 private:
  TerminalWindow& open(const TerminalLaunch& launch, std::unique_ptr<DisplayBar> bar);
  TerminalWindow& openFirst(const TerminalLaunch& launch);
  /// The front window of those that were open when the application quit; null if there are none.
  TerminalWindow* restoreSession(const std::string& activationToken);
  std::unique_ptr<TerminalWindow> createTerminalWindow(const TerminalLaunch& launch, std::unique_ptr<DisplayBar> bar);
  /// What a new window of the full emulation does besides showing its terminal.
  void prepareFullEmulation(TerminalWindow& window);
  /// What is shown, with its shell started, and the shell's name.
  std::unique_ptr<ContentView> makeLogContent(const TerminalLaunch& launch, const TerminalSize& size, QString& name);
  std::unique_ptr<ContentView> makeFullContent(const TerminalLaunch& launch, const TerminalSize& size, QString& name);
  void keepClosed(TerminalWindow& window);
  void openTab(DetachedTab tab, std::optional<QRect> place);
  /// The key window, if it is of the full emulation and not for a program.
  TerminalWindow* keyFullWindow() const;
  std::vector<TerminalWindow*> fullWindows() const;
  void offerDisplays(TerminalWindow& window, std::unique_ptr<DisplayBar> bar);
  void useFullEmulation(TerminalWindow& inPlaceOf);
  void replace(TerminalWindow& window, Display display);
  void forget(TerminalWindow& window);

  Config& m_config;
  UserDefaults& m_defaults;
  std::function<void(TerminalWindow&)> m_prepareWindow;
  Environment m_environment;
  std::unique_ptr<EmulationSettingsStore> m_emulationSettings;
  DesktopNotifications m_notifications;
  LauncherProgress m_launcher{LauncherEntry(QStringLiteral("org.zolt.Zolt.desktop"))};
  PaneMaker m_panes;
  RememberedSize m_firstSize{cacheFolder()};
  std::unique_ptr<SessionStore> m_session;
  ClosedTerminals m_closedTerminals;
  std::optional<Display> m_display;
  bool m_awaitsFirst = false;  // window, of a service
  std::vector<std::unique_ptr<TerminalWindow>> m_windows;
  std::vector<QPointer<TerminalWindow>> m_leaving;  // forgotten, each until the event is over that closed it
  std::unique_ptr<UpdaterController> m_updaterController;
};

}  // namespace zolt
