#pragma once

#include <memory>

#include "platform/UserDefaults.h"
#include "updates/UpdateContext.h"
#include "updates/UpdateDriver.h"
#include "updates/UpdateScheduler.h"
#include "updates/views/UpdateWindows.h"
#include "updates/views/UpdaterBackend.h"

namespace zolt {

/// The built-in client of appcast feeds.
class AppcastBackend : public UpdaterBackend {
  Q_OBJECT

 public:
  /// With `startingUpdater` it checks automatically, as the settings say. `defaults` must outlive the back end.
  AppcastBackend(bool startingUpdater, UserDefaults& defaults, UpdateEnvironment environment,
                 UpdateDriver::HandOver handOver, UpdateWindows::OpenPage openPage, QObject* parent = nullptr);

  void checkForUpdates() override;
  bool canCheckForUpdates() const override { return m_driver.state() == UpdateDriver::State::Idle; }

 private:
  void start();
  void followState();

  UpdateContext m_context;
  UpdateDriver m_driver;
  UpdateScheduler m_scheduler;
  UpdateWindows m_windows;
  bool m_couldCheck = true;
};

}  // namespace zolt
