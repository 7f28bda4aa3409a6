#pragma once

#include <QObject>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "updates/AppcastSelection.h"
#include "updates/DownloadFolder.h"
#include "updates/PackageDownload.h"
#include "updates/ReleaseNotes.h"
#include "updates/TextFetch.h"
#include "updates/UpdateContext.h"

namespace zolt {

/// A version offered to the user.
struct UpdateOffer {
  AppcastItem item;
  bool isCritical = false;            // cannot be skipped
  std::optional<ReleaseNotes> notes;  // nothing until they have been fetched
};

/// Runs updates one after the other, from the check to handing a verified package over to the installer. Main thread.
///
///     Idle --check--> Checking --an offer--> Offering --install--> Downloading --> Verifying --handed over--> Idle
///
/// Anything else leads back to Idle: nothing new, a failure, `cancel`, `skip`, `remindLater`.
class UpdateDriver : public QObject {
  Q_OBJECT

 public:
  enum class State { Idle, Checking, Offering, Downloading, Verifying };
  /// Passes the path of a verified package to the installer; false if there is none.
  using HandOver = std::function<bool(const QString& path)>;

  /// `context` must outlive the driver. Removes what earlier programs left in the download folder.
  UpdateDriver(UpdateContext& context, HandOver handOver, QObject* parent = nullptr);
  ~UpdateDriver() override;

  State state() const { return m_state; }
  /// Who requested the check; in every state but Idle.
  CheckKind kind() const { return m_kind; }
  /// From Offering on.
  const UpdateOffer& offer() const { return m_offer; }
  const UpdateEnvironment& environment() const { return m_context.environment; }

  /// Starts a check; does nothing unless Idle. Without a feed, a background check does nothing either.
  void check(CheckKind kind);
  /// Returns to Idle and removes the download.
  void cancel();
  /// In Offering only: downloads and verifies the package and hands it over.
  void install();
  /// In Offering only, and not for critical updates: background checks will not offer this version again.
  void skip();
  /// In Offering only: returns to Idle; the next check offers the version again.
  void remindLater();

 Q_SIGNALS:
  /// After the state changed.
  void stateChanged();
  /// In Offering, when `offer().notes` has become available.
  void notesArrived();
  /// In Downloading; `totalBytes` is 0 if the feed does not give a length.
  void progressed(std::int64_t receivedBytes, std::int64_t totalBytes);
  /// In Idle, after a check by hand.
  void foundNothingNew();
  /// In Idle, with the sentence to show. A background check fails silently unless it had offered a version.
  void failed(const QString& sentence);
  /// In Idle, after the package was passed to the installer.
  void handedOver(const QString& path);

 private:
  void setState(State state);
  void end();
  void fail(const QString& sentence);
  void takeFeed();
  void beginOffer(const AppcastItem& item);
  void fetchNotes();
  void takePackage(const QString& path);

  UpdateContext& m_context;
  HandOver m_handOver;
  DownloadFolder m_folder;
  State m_state = State::Idle;
  CheckKind m_kind = CheckKind::ByHand;
  UpdateOffer m_offer;
  std::unique_ptr<TextFetch> m_text;  // the feed or the release notes
  std::unique_ptr<PackageDownload> m_download;
};

}  // namespace zolt
