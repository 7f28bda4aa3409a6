#pragma once

#include <QObject>
#include <memory>

#include "platform/UserDefaults.h"
#include "updates/UpdateContext.h"
#include "updates/UpdateDriver.h"
#include "updates/views/UpdateWindows.h"
#include "updates/views/UpdaterBackend.h"

namespace zolt {

/// The software-update service, which the application's delegate owns. Main thread.
///
/// On macOS it is the Sparkle framework, where the application's bundle has it; everywhere else a client of the same
/// format, which gives the verified package to the desktop's installer.
class UpdaterController : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged)

 public:
  /// Where packages and pages go: by default to the desktop, by QDesktopServices.
  struct Outlets {
    UpdateDriver::HandOver handOver;
    UpdateWindows::OpenPage openPage;

    static Outlets ofTheDesktop();
  };

  /// With `startingUpdater` checks begin on their own, as the settings say. `defaults` must outlive the controller.
  explicit UpdaterController(bool startingUpdater, UserDefaults& defaults = UserDefaults::standard(),
                             UpdateEnvironment environment = UpdateEnvironment::ofThisProgram(),
                             Outlets outlets = Outlets::ofTheDesktop(), QObject* parent = nullptr);

  /// Checks now and shows the interface; while a check or an update is under way its window comes to the front.
  void checkForUpdates() { m_backend->checkForUpdates(); }
  /// False while a check or an update is under way.
  bool canCheckForUpdates() const { return m_backend->canCheckForUpdates(); }

 Q_SIGNALS:
  void canCheckForUpdatesChanged();

 private:
  std::unique_ptr<UpdaterBackend> m_backend;
};

}  // namespace zolt
