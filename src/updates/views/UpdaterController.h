#pragma once

#include <QObject>
#include <memory>

#include "platform/UserDefaults.h"
#include "updates/UpdateContext.h"
#include "updates/UpdateDriver.h"
#include "updates/views/UpdateWindows.h"
#include "updates/views/UpdaterBackend.h"

namespace zolt {

/// The software update service, owned by the application's delegate. Main thread.
///
/// On macOS it uses the Sparkle framework if the application's bundle contains it; otherwise the built-in client, which
/// passes the verified package to the installer of the desktop.
class UpdaterController : public QObject {
  Q_OBJECT
  Q_PROPERTY(bool canCheckForUpdates READ canCheckForUpdates NOTIFY canCheckForUpdatesChanged)

 public:
  /// How packages and pages are opened; by default with QDesktopServices.
  struct Outlets {
    UpdateDriver::HandOver handOver;
    UpdateWindows::OpenPage openPage;

    static Outlets ofTheDesktop();
  };

  /// With `startingUpdater` it checks automatically, as the settings say. `defaults` must outlive the controller.
  explicit UpdaterController(bool startingUpdater, UserDefaults& defaults = UserDefaults::standard(),
                             UpdateEnvironment environment = UpdateEnvironment::ofThisProgram(),
                             Outlets outlets = Outlets::ofTheDesktop(), QObject* parent = nullptr);

  /// Checks now and shows the progress; during a check or an update, brings its window to the front.
  void checkForUpdates() { m_backend->checkForUpdates(); }
  /// False during a check or an update.
  bool canCheckForUpdates() const { return m_backend->canCheckForUpdates(); }

 Q_SIGNALS:
  void canCheckForUpdatesChanged();

 private:
  std::unique_ptr<UpdaterBackend> m_backend;
};

}  // namespace zolt
