#pragma once

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <vector>

#include "updates/Appcast.h"

namespace zolt {

/// The content of an item as written in the feed; absent texts are null.
struct AppcastDraft {
  QString title, link, published, version, shortVersion, minimumSystemVersion, releaseNotesLink, channel,
      phasedRolloutInterval, description, descriptionFormat, criticalBelow;
  bool critical = false;
  bool informational = false;
  std::vector<AppcastEnclosure> enclosures;  // with addresses as written in the feed
};

/// Reads the items of an appcast from XML, within fixed limits.
class AppcastReader {
 public:
  explicit AppcastReader(const QByteArray& xml) : m_xml(xml) {}

  /// All items, or those before the first error. Call it once.
  std::vector<AppcastDraft> read();

  /// Whether the XML is not well-formed, too deep, too long, or has a document type.
  bool hasError() const { return m_xml.hasError(); }
  /// Whether the root element is that of RSS.
  bool isRss() const { return m_isRss; }

 private:
  void next();
  template <class Visit>
  void forEachChild(Visit visit);
  void skip();
  QString text();
  bool isOfRss(const char* name) const;
  void readItem();
  void readChild(AppcastDraft& item);
  void readDescription(AppcastDraft& item);
  void readEnclosure(AppcastDraft& item);

  QXmlStreamReader m_xml;
  std::vector<AppcastDraft> m_items;
  int m_depth = 0;
  bool m_isRss = false;
};

}  // namespace zolt
