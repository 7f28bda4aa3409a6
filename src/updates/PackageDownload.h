#pragma once

#include <QFile>
#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>

#include "base/Result.h"
#include "updates/DownloadFolder.h"
#include "updates/Fetch.h"
#include "updates/PackagePlan.h"
#include "updates/UpdateContext.h"

namespace zolt {

/// Downloads and verifies one package. Main thread; the verification runs in the background.
///
/// A failure of any kind, and destruction at any time, remove the download.
class PackageDownload : public QObject {
  Q_OBJECT

 public:
  /// `context` and `folder` must outlive the download.
  PackageDownload(UpdateContext& context, DownloadFolder& folder, PackagePlan plan, QObject* parent = nullptr);
  ~PackageDownload() override;

  void start();
  /// Ends the download at once, without a signal, and removes it.
  void stop();

 Q_SIGNALS:
  void progressed(std::int64_t receivedBytes);
  /// The download is complete, and its signature is being verified.
  void verifying();
  /// Either of these, once and last: the path of the verified package, or the sentence to show.
  void ready(const QString& path);
  void failed(const QString& sentence);

 private:
  void verify();
  void finish(const Result<void>& verified);

  UpdateContext& m_context;
  DownloadFolder& m_folder;
  PackagePlan m_plan;
  QFile* m_file = nullptr;
  std::unique_ptr<Fetch> m_fetch;
  bool m_isStopped = false;
};

}  // namespace zolt
