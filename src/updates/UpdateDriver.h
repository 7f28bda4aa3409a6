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

/// A version that the user may have.
struct UpdateOffer {
  AppcastItem item;
  bool isCritical = false;            // must not be skipped
  std::optional<ReleaseNotes> notes;  // nothing while they are being fetched
};

/// One update run after the other, from the check to the hand-over of a verified package. Main thread.
///
///     Idle --check--> Checking --an offer--> Offering --install--> Downloading --> Verifying --handed over--> Idle
///
/// Every other end of a state leads to Idle: nothing found, a failure, `cancel`, `skip`, `remindLater`.
class UpdateDriver : public QObject {
  Q_OBJECT

 public:
  enum class State { Idle, Checking, Offering, Downloading, Verifying };
  /// Gives a verified package, by its path, to whoever installs it; false when nobody does.
  using HandOver = std::function<bool(const QString& path)>;

  /// `context` must outlive the driver. Removes what an earlier run left in the download folder.
  UpdateDriver(UpdateContext& context, HandOver handOver, QObject* parent = nullptr);
  ~UpdateDriver() override;

  State state() const { return m_state; }
  /// Who asked for the check of this run; in every state but Idle.
  CheckKind kind() const { return m_kind; }
  /// In Offering and after it.
  const UpdateOffer& offer() const { return m_offer; }
  const UpdateEnvironment& environment() const { return m_context.environment; }

  /// Starts a run; in Idle only, else nothing happens. Without a feed a background check does nothing.
  void check(CheckKind kind);
  /// Ends the run, and removes what was downloaded.
  void cancel();
  /// In Offering only: downloads and verifies the package, and hands it over.
  void install();
  /// In Offering only, and not for critical updates: background checks do not offer this version again.
  void skip();
  /// In Offering only: ends the run; the next check offers the version again.
  void remindLater();

 Q_SIGNALS:
  /// After the state changed.
  void stateChanged();
  /// In Offering, when `offer().notes` has come.
  void notesArrived();
  /// In Downloading; `totalBytes` is 0 when the feed does not say.
  void progressed(std::int64_t receivedBytes, std::int64_t totalBytes);
  /// In Idle, at the end of a check by hand.
  void foundNothingNew();
  /// In Idle: the sentence to show. Not for background checks, but for what follows an offer.
  void failed(const QString& sentence);
  /// In Idle: the package was given to the installer.
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
