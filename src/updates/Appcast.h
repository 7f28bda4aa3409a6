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
  QString length;                     // as it stands in the feed, in bytes; null when absent
  QString type;                       // the media type
  QString edSignature;                // as it stands in the feed
  QString version, shortVersion, os;  // empty when absent
};

/// One version that a feed tells of.
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
  QString criticalBelow;                             // critical only for versions below this one; empty: for all
  bool informational = false;                        // told, not installed: always where there is no enclosure
  std::optional<std::int64_t> phasedRolloutSeconds;  // between two groups of users
  std::optional<AppcastEnclosure> enclosure;
};

/// "macos" or "linux": the name of this system in feeds.
QString systemNameInFeeds();

/// The items of the appcast `xml` for the system `system`, in their order. Pure.
///
/// An appcast is RSS 2.0 with elements and attributes of the namespace
/// "http://www.andymatuschak.org/xml-namespaces/sparkle", whatever its prefix; items are /rss/channel/item. Addresses
/// that are relative are so to `feed`. Of an element that occurs more than once in an item the first counts. Passed
/// over are items without a version, with one of more than 100 characters, with packages for other systems only, with a
/// package that has no address, and those to be told only that have no page to show.
///
/// Fails for what is not well-formed, has a document type (so there are no entities of its own), is nested more than 32
/// elements deep or has more than 1000 items, and for what is XML but no RSS.
Result<std::vector<AppcastItem>> parseAppcast(const QByteArray& xml, const QUrl& feed, const QString& system);

}  // namespace zolt
