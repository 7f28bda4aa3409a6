#include "updates/views/AppcastBackend.h"

#include <QTimer>
#include <utility>

namespace zolt {

AppcastBackend::AppcastBackend(bool startingUpdater, UserDefaults& defaults, UpdateEnvironment environment,
                               UpdateDriver::HandOver handOver, UpdateWindows::OpenPage openPage, QObject* parent)
    : UpdaterBackend(parent),
      m_context{UpdateSettings(defaults, UpdateBuildValues::ofThisBuild()), std::move(environment), {}},
      m_driver(m_context, std::move(handOver)),
      m_scheduler(m_context),
      m_windows(m_driver, std::move(openPage)) {
  connect(&m_driver, &UpdateDriver::stateChanged, this, &AppcastBackend::followState);
  connect(&m_scheduler, &UpdateScheduler::due, this, [this] { m_driver.check(CheckKind::Background); });
  connect(&defaults, &UserDefaults::changed, this, [this](const std::string& key) {
    if (UpdateSettings::decidesSchedule(key)) m_scheduler.rearm();
  });
  if (startingUpdater) start();
}

void AppcastBackend::start() {
  const LaunchFacts facts = m_context.settings.launchFacts();
  if (!facts.hasLaunchedBefore) m_context.settings.setHasLaunchedBefore();
  m_scheduler.start();
  if (!shouldAskAboutChecks(facts)) return;
  // After the windows of the application, which would otherwise cover the question.
  QTimer::singleShot(m_context.environment.firstCheckDelay, this, [this] {
    m_windows.askForConsent([this](bool enabled) { m_context.settings.setAutomaticChecks(enabled); });
  });
}

void AppcastBackend::checkForUpdates() {
  if (canCheckForUpdates()) {
    m_driver.check(CheckKind::ByHand);
  } else {
    m_windows.raise();
  }
}

void AppcastBackend::followState() {
  const bool canCheck = canCheckForUpdates();
  if (std::exchange(m_couldCheck, canCheck) != canCheck) Q_EMIT canCheckForUpdatesChanged();
}

}  // namespace zolt
