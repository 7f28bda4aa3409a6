#include "updates/views/UpdaterController.h"

#include <QDesktopServices>
#include <utility>

#include "updates/views/AppcastBackend.h"
#ifdef Q_OS_MACOS
#include "updates/views/FrameworkBackend.h"
#endif

namespace zolt {

UpdaterController::Outlets UpdaterController::Outlets::ofTheDesktop() {
  return {.handOver = [](const QString& path) { return QDesktopServices::openUrl(QUrl::fromLocalFile(path)); },
          .openPage = [](const QUrl& page) { QDesktopServices::openUrl(page); }};
}

UpdaterController::UpdaterController(bool startingUpdater, UserDefaults& defaults, UpdateEnvironment environment,
                                     Outlets outlets, QObject* parent)
    : QObject(parent) {
#ifdef Q_OS_MACOS
  m_backend = makeFrameworkBackend(startingUpdater);
#endif
  if (!m_backend) {
    m_backend = std::make_unique<AppcastBackend>(startingUpdater, defaults, std::move(environment),
                                                 std::move(outlets.handOver), std::move(outlets.openPage));
  }
  connect(m_backend.get(), &UpdaterBackend::canCheckForUpdatesChanged, this,
          &UpdaterController::canCheckForUpdatesChanged);
}

}  // namespace zolt
