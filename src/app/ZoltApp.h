#pragma once

#include <QObject>
#include <QWidget>
#include <memory>
#include <vector>

#include "app/ActionChain.h"
#include "app/AppDelegate.h"
#include "app/Menus.h"
#include "settings/views/PreferencesWindow.h"

namespace zolt {

/// The application's scenes: terminal windows with their menus, and the settings. Performs the actions
/// "showPreferences", "showCommands" and "showAbout". Main thread.
class ZoltApp : public QObject {
  Q_OBJECT

 public:
  /// `defaults` and `config` must outlive the application. Every shell inherits `environment`.
  ZoltApp(Config& config, UserDefaults& defaults, Environment environment = processEnvironment());
  ~ZoltApp() override;

  AppDelegate& appDelegate() { return *m_appDelegate; }
  const ActionChain& actions() const { return m_actions; }

  Q_INVOKABLE void showPreferences();
  /// Over the key window, if that is of the full emulation.
  Q_INVOKABLE void showCommands();
  Q_INVOKABLE void showAbout();

 private:
  void prepareWindow(TerminalWindow& window);
  std::vector<TerminalWindow*> windowsOnScreen() const;

  Config& m_config;
  UserDefaults& m_defaults;
  std::unique_ptr<AppDelegate> m_appDelegate;
  ActionChain m_actions;
  MenuContext m_menus;
  std::unique_ptr<PreferencesWindow> m_preferences;
  std::unique_ptr<QWidget> m_about;
};

}  // namespace zolt
