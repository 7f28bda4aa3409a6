#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/Result.h"

namespace zolt {

/// The package of an update.
struct AppcastEnclosure {
  QUrl url;                           // absolute
  QString length;                     // in bytes, as written in the feed; null when absent
  QString type;                       // the media type
  QString edSignature;                // as written in the feed
  QString version, shortVersion, os;  // empty when absent
};

/// A version announced by a feed.
struct AppcastItem {
  QString version;       // compared; never empty
  QString shortVersion;  // shown; never empty
  QString title;
  QUrl link;            // http, https or empty
  QDateTime published;  // invalid when unknown
  QString description;
  bool descriptionIsPlainText = false;
  QUrl releaseNotesLink;  // empty when absent
  QString minimumSystemVersion;
  QString channel;  // empty: the default channel
  bool critical = false;
  QString criticalBelow;       // critical only for versions below this one; empty for all versions
  bool informational = false;  // announced, but not installed; always true without an enclosure
  std::optional<std::int64_t> phasedRolloutSeconds;  // between two groups of users
  std::optional<AppcastEnclosure> enclosure;
};

/// "macos" or "linux": the name of this system in feeds.
QString systemNameInFeeds();

/// The items of the appcast `xml` for the system `system`, in their order. Pure.
///
/// An appcast is RSS 2.0 with elements and attributes of the namespace
/// "http://www.andymatuschak.org/xml-namespaces/sparkle", whatever its prefix; items are /rss/channel/item. Relative
/// addresses are resolved against `feed`. If an element occurs more than once in an item, the first one counts. Items
/// are skipped if they have no version, a version of more than 100 characters, packages for other systems only, or a
/// package without an address, and informational items if they have no page to show.
///
/// Fails if the XML is not well-formed, has a document type (which excludes custom entities), is nested more than 32
/// elements deep, has more than 1000 items, or is not RSS.
Result<std::vector<AppcastItem>> parseAppcast(const QByteArray& xml, const QUrl& feed, const QString& system);

}  // namespace zolt
