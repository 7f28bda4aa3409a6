#pragma once

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>
#include <vector>

#include "updates/Appcast.h"

namespace zolt {

/// What an item of a feed says, as it stands there; null where it says nothing.
struct AppcastDraft {
  QString title, link, published, version, shortVersion, minimumSystemVersion, releaseNotesLink, channel,
      phasedRolloutInterval, description, descriptionFormat, criticalBelow;
  bool critical = false;
  bool informational = false;
  std::vector<AppcastEnclosure> enclosures;  // addresses as they stand there
};

/// Reads the items of an appcast out of XML, with everything about it bounded.
class AppcastReader {
 public:
  explicit AppcastReader(const QByteArray& xml) : m_xml(xml) {}

  /// All items, once; those before the first error when there is one.
  std::vector<AppcastDraft> read();

  /// Not well-formed, too deep, too long, or with a document type.
  bool hasError() const { return m_xml.hasError(); }
  /// Whether the outermost element is that of RSS.
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
