#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace zolt::test {

inline const QUrl kFeedUrl(QStringLiteral("https://updates.example.org/zolt/appcast.xml"));

/// An appcast with these items.
inline QByteArray feedOf(const QByteArray& items) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
         "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
         "<channel><title>Zolt</title>\n" +
         items + "</channel></rss>\n";
}

/// The item of a version with a package of 5 bytes, and any further elements.
inline QByteArray itemOf(const QByteArray& version, const QByteArray& more = {}) {
  return "<item><title>Zolt " + version + "</title><sparkle:version>" + version + "</sparkle:version>" + more +
         "<enclosure url=\"Zolt-" + version + ".tar.gz\" length=\"5\" type=\"application/octet-stream\"/></item>\n";
}

/// The informational item of a version.
inline QByteArray informationalItem(const QByteArray& version) {
  return "<item><sparkle:version>" + version + "</sparkle:version><link>https://example.org/" + version +
         "</link></item>\n";
}

}  // namespace zolt::test
