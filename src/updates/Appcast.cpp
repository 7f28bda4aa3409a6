#include "updates/Appcast.h"

#include "updates/AppcastReader.h"
#include "updates/FeedDate.h"
#include "updates/UpdateError.h"

namespace zolt {

namespace {

constexpr int kMaxVersionLength = 100;

QUrl resolved(const QUrl& feed, const QUrl& address) {
  if (address.isEmpty()) return {};
  const QUrl url = feed.resolved(address);
  return url.isValid() && !url.host().isEmpty() ? url : QUrl();
}

QUrl webPage(const QUrl& url) {
  return url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http") ? url : QUrl();
}

QString firstOf(const QString& preferred, const QString& other) {
  return preferred.isEmpty() ? other : preferred;
}

std::optional<AppcastItem> itemOf(const AppcastDraft& draft, const QUrl& feed, const QString& system) {
  AppcastItem item;
  for (const AppcastEnclosure& enclosure : draft.enclosures) {
    const QString os = enclosure.os.trimmed();
    if (!os.isEmpty() && os.compare(system, Qt::CaseInsensitive) != 0) continue;
    item.enclosure = enclosure;
    break;
  }
  if (!draft.enclosures.empty() && !item.enclosure) return std::nullopt;
  const AppcastEnclosure package = item.enclosure.value_or(AppcastEnclosure{});
  if (item.enclosure) {
    item.enclosure->url = resolved(feed, package.url);
    if (item.enclosure->url.isEmpty()) return std::nullopt;
  }
  item.version = firstOf(draft.version.simplified(), package.version.simplified());
  item.shortVersion =
      firstOf(firstOf(draft.shortVersion.simplified(), package.shortVersion.simplified()), item.version);
  if (item.version.isEmpty() || item.version.size() > kMaxVersionLength ||
      item.shortVersion.size() > kMaxVersionLength) {
    return std::nullopt;
  }
  item.title = draft.title.simplified();
  item.link = webPage(resolved(feed, QUrl(draft.link.trimmed())));
  item.informational = draft.informational || !item.enclosure;
  if (item.informational && item.link.isEmpty()) return std::nullopt;
  item.published = dateOfFeed(draft.published);
  item.description = draft.description;
  item.descriptionIsPlainText = draft.descriptionFormat == QLatin1String("plain-text");
  item.releaseNotesLink = resolved(feed, QUrl(draft.releaseNotesLink.trimmed()));
  item.minimumSystemVersion = draft.minimumSystemVersion.simplified();
  item.channel = draft.channel.simplified();
  item.critical = draft.critical;
  item.criticalBelow = draft.criticalBelow.simplified();
  bool isNumber = false;
  const qint64 seconds = draft.phasedRolloutInterval.trimmed().toLongLong(&isNumber);
  if (isNumber && seconds > 0) item.phasedRolloutSeconds = seconds;
  return item;
}

}  // namespace

QString systemNameInFeeds() {
#ifdef Q_OS_MACOS
  return QStringLiteral("macos");
#else
  return QStringLiteral("linux");
#endif
}

Result<std::vector<AppcastItem>> parseAppcast(const QByteArray& xml, const QUrl& feed, const QString& system) {
  AppcastReader reader(xml);
  const std::vector<AppcastDraft> drafts = reader.read();
  if (reader.hasError()) return failureOf(UpdateError::FeedUnreadable);
  if (!reader.isRss()) return failureOf(UpdateError::FeedNoAppcast);
  std::vector<AppcastItem> items;
  for (const AppcastDraft& draft : drafts) {
    if (std::optional<AppcastItem> item = itemOf(draft, feed, system)) items.push_back(std::move(*item));
  }
  return items;
}

}  // namespace zolt
