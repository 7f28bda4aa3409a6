#include "updates/UpdateDriver.h"

#include <QFile>
#include <utility>

#include "updates/Appcast.h"
#include "updates/FetchErrors.h"
#include "updates/UpdateError.h"

namespace zolt {

namespace {

// Deletes from the event loop, since the object may be the sender of the current signal.
template <class T>
void discard(std::unique_ptr<T>& part, const QObject* receiver) {
  if (!part) return;
  part->stop();
  part->disconnect(receiver);
  part.release()->deleteLater();
}

}  // namespace

UpdateDriver::UpdateDriver(UpdateContext& context, HandOver handOver, QObject* parent)
    : QObject(parent),
      m_context(context),
      m_handOver(std::move(handOver)),
      m_folder(context.environment.downloadFolder) {
  m_folder.removeLeftovers();
}

UpdateDriver::~UpdateDriver() = default;

void UpdateDriver::setState(State state) {
  m_state = state;
  Q_EMIT stateChanged();
}

void UpdateDriver::end() {
  discard(m_text, this);
  discard(m_download, this);
  if (m_state != State::Idle) setState(State::Idle);
}

void UpdateDriver::fail(const QString& sentence) {
  const bool isTold = m_kind == CheckKind::ByHand || m_state != State::Checking;
  end();
  if (isTold) Q_EMIT failed(sentence);
}

void UpdateDriver::check(CheckKind kind) {
  if (m_state != State::Idle) return;
  const QString feed = m_context.settings.feedUrl();
  if (feed.isEmpty()) {
    if (kind == CheckKind::ByHand) Q_EMIT failed(sentenceOf(UpdateError::NoFeed));
    return;
  }
  m_kind = kind;
  m_context.settings.setLastCheckTime(m_context.environment.now());
  m_text = std::make_unique<TextFetch>(m_context, QUrl(feed.trimmed()));
  connect(m_text.get(), &TextFetch::succeeded, this, &UpdateDriver::takeFeed);
  connect(m_text.get(), &TextFetch::failed, this, [this](FetchError error) { fail(sentenceOf(feedErrorOf(error))); });
  m_text->start();
  setState(State::Checking);
}

void UpdateDriver::takeFeed() {
  const auto items =
      parseAppcast(m_text->content(), QUrl(m_context.settings.feedUrl().trimmed()), m_context.environment.systemName);
  if (!items) return fail(QString::fromStdString(items.reason()));
  const UpdateEnvironment& environment = m_context.environment;
  const AppcastSelection selection = selectItem(items.value(), {.kind = m_kind,
                                                                .runningVersion = environment.runningVersion,
                                                                .systemVersion = environment.systemVersion,
                                                                .skippedVersion = m_context.settings.skippedVersion(),
                                                                .rolloutGroup = m_context.settings.rolloutGroup(),
                                                                .now = environment.now()});
  switch (selection.outcome) {
    case AppcastSelection::Outcome::NothingUsable:
      return fail(sentenceOf(UpdateError::FeedNothingUsable));
    case AppcastSelection::Outcome::UpToDate:
      end();
      if (m_kind == CheckKind::ByHand) Q_EMIT foundNothingNew();
      return;
    case AppcastSelection::Outcome::Offered:
      return beginOffer(selection.item);
  }
}

void UpdateDriver::beginOffer(const AppcastItem& item) {
  discard(m_text, this);
  m_offer = {.item = item,
             .isCritical = isCritical(item, m_context.environment.runningVersion),
             .notes = ReleaseNotes{
                 .format = item.descriptionIsPlainText ? ReleaseNotes::Format::Plain : ReleaseNotes::Format::Html,
                 .text = item.description}};
  if (!item.releaseNotesLink.isEmpty()) fetchNotes();
  setState(State::Offering);
}

// Falls back on the description in the feed if the notes cannot be fetched.
void UpdateDriver::fetchNotes() {
  m_text = std::make_unique<TextFetch>(m_context, m_offer.item.releaseNotesLink);
  connect(m_text.get(), &TextFetch::succeeded, this, [this] {
    m_offer.notes = releaseNotesOf(m_text->content(), m_text->contentType());
    discard(m_text, this);
    Q_EMIT notesArrived();
  });
  connect(m_text.get(), &TextFetch::failed, this, [this, described = *m_offer.notes] {
    m_offer.notes = described;
    discard(m_text, this);
    Q_EMIT notesArrived();
  });
  m_offer.notes.reset();
  m_text->start();
}

void UpdateDriver::install() {
  if (m_state != State::Offering || m_offer.item.informational) return;
  discard(m_text, this);
  const auto plan =
      planPackage(*m_offer.item.enclosure, m_context.settings.publicKey(), m_context.environment.maximumPackageBytes);
  if (!plan) return fail(QString::fromStdString(plan.reason()));
  const std::int64_t total = plan.value().length.value_or(0);
  m_download = std::make_unique<PackageDownload>(m_context, m_folder, plan.value());
  PackageDownload* download = m_download.get();
  connect(download, &PackageDownload::progressed, this,
          [this, total](std::int64_t received) { Q_EMIT progressed(received, total); });
  connect(download, &PackageDownload::verifying, this, [this] { setState(State::Verifying); });
  connect(download, &PackageDownload::ready, this, &UpdateDriver::takePackage);
  connect(download, &PackageDownload::failed, this, &UpdateDriver::fail);
  download->start();
  setState(State::Downloading);
}

void UpdateDriver::takePackage(const QString& path) {
  if (!m_handOver(path)) {
    QFile::remove(path);
    return fail(sentenceOf(UpdateError::PackageNotOpened));
  }
  end();
  Q_EMIT handedOver(path);
}

void UpdateDriver::skip() {
  if (m_state != State::Offering || m_offer.isCritical) return;
  m_context.settings.setSkippedVersion(m_offer.item.version);
  end();
}

void UpdateDriver::remindLater() {
  if (m_state == State::Offering) end();
}

void UpdateDriver::cancel() {
  end();
}

}  // namespace zolt
