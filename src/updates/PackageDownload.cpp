#include "updates/PackageDownload.h"

#include <utility>

#include "platform/MainQueue.h"
#include "platform/WorkerQueue.h"
#include "updates/FetchErrors.h"
#include "updates/UpdateError.h"

namespace zolt {

PackageDownload::PackageDownload(UpdateContext& context, DownloadFolder& folder, PackagePlan plan, QObject* parent)
    : QObject(parent), m_context(context), m_folder(folder), m_plan(std::move(plan)) {}

PackageDownload::~PackageDownload() {
  stop();
}

void PackageDownload::stop() {
  // Only once: the folder may already be in use by the next download.
  if (std::exchange(m_isStopped, true)) return;
  if (m_fetch) m_fetch->stop();
  m_folder.discard();
}

void PackageDownload::start() {
  const Result<QFile*> file = m_folder.begin();
  if (!file) {
    MainQueue::async(this, [this, failure = Failure{file.reason()}] { finish(failure); });
    return;
  }
  m_file = file.value();
  m_fetch = std::make_unique<Fetch>(m_context.network.manager(),
                                    FetchRequest{.url = m_plan.url,
                                                 .maximumBytes = m_context.environment.maximumPackageBytes,
                                                 .exactBytes = m_plan.length,
                                                 .idleLimit = m_context.environment.idleLimit},
                                    *m_file);
  connect(m_fetch.get(), &Fetch::progressed, this, &PackageDownload::progressed);
  connect(m_fetch.get(), &Fetch::succeeded, this, &PackageDownload::verify);
  connect(m_fetch.get(), &Fetch::failed, this, [this](FetchError error) { finish(failureOf(packageErrorOf(error))); });
  m_fetch->start();
}

void PackageDownload::verify() {
  if (!m_file->flush()) return finish(failureOf(UpdateError::PackageNotSaved));
  const MainQueue::Owner owner(this);
  WorkerQueue::utility().async([this, owner, path = m_file->fileName(), plan = m_plan] {
    const Result<void> verified = verifyFile(path, plan.signature, plan.key);
    MainQueue::async(owner, [this, verified] { finish(verified); });
  });
  Q_EMIT verifying();
}

void PackageDownload::finish(const Result<void>& verified) {
  if (m_isStopped) return;
  const Result<QString> kept = verified ? m_folder.keep(m_plan.fileName) : Result<QString>(Failure{verified.reason()});
  if (kept) {
    Q_EMIT ready(kept.value());
  } else {
    stop();
    Q_EMIT failed(QString::fromStdString(kept.reason()));
  }
}

}  // namespace zolt
