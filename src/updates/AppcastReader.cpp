#include "updates/AppcastReader.h"

#include <utility>

namespace zolt {

namespace {

constexpr int kMaxDepth = 32;
constexpr std::size_t kMaxItems = 1000;
constexpr QLatin1String kNamespace("http://www.andymatuschak.org/xml-namespaces/sparkle");

// The elements of an item that contain only text.
struct TextElement {
  bool inNamespace;
  const char* name;
  QString AppcastDraft::*field;
};

constexpr TextElement kTextElements[] = {
    {false, "title", &AppcastDraft::title},
    {false, "link", &AppcastDraft::link},
    {false, "pubDate", &AppcastDraft::published},
    {true, "version", &AppcastDraft::version},
    {true, "shortVersionString", &AppcastDraft::shortVersion},
    {true, "minimumSystemVersion", &AppcastDraft::minimumSystemVersion},
    {true, "releaseNotesLink", &AppcastDraft::releaseNotesLink},
    {true, "channel", &AppcastDraft::channel},
    {true, "phasedRolloutInterval", &AppcastDraft::phasedRolloutInterval},
};

// A value that is there but empty is not absent.
QString attribute(const QXmlStreamReader& xml, const char* name) {
  const QXmlStreamAttributes attributes = xml.attributes();
  const QLatin1String wanted(name);
  return attributes.hasAttribute(wanted) ? QString(QLatin1String("")).append(attributes.value(wanted)) : QString();
}

QString namespacedAttribute(const QXmlStreamReader& xml, const char* name) {
  return xml.attributes().value(kNamespace, QLatin1String(name)).toString();
}

}  // namespace

std::vector<AppcastDraft> AppcastReader::read() {
  while (!m_xml.atEnd()) {
    next();
    if (!m_xml.isStartElement()) continue;
    m_isRss = isOfRss("rss");
    if (!m_isRss) {
      skip();
      continue;
    }
    forEachChild([this] {
      if (!isOfRss("channel")) return skip();
      forEachChild([this] { isOfRss("item") ? readItem() : skip(); });
    });
  }
  return std::move(m_items);
}

void AppcastReader::next() {
  switch (m_xml.readNext()) {
    case QXmlStreamReader::DTD:
    case QXmlStreamReader::EntityReference:
      m_xml.raiseError(QStringLiteral("document types are not read"));
      break;
    case QXmlStreamReader::StartElement:
      if (++m_depth > kMaxDepth) m_xml.raiseError(QStringLiteral("nested too deep"));
      break;
    case QXmlStreamReader::EndElement:
      --m_depth;
      break;
    default:
      break;
  }
}

// Calls `visit` at the start of each child of the current element; it must read to the end of the child.
template <class Visit>
void AppcastReader::forEachChild(Visit visit) {
  const int depth = m_depth;
  while (!m_xml.atEnd()) {
    next();
    if (m_depth < depth) return;
    if (m_xml.isStartElement()) visit();
  }
}

void AppcastReader::skip() {
  forEachChild([this] { skip(); });
}

// The text of the current element and its children.
QString AppcastReader::text() {
  const int depth = m_depth;
  QString result = QStringLiteral("");
  while (!m_xml.atEnd()) {
    next();
    if (m_depth < depth) break;
    if (m_xml.isCharacters()) result += m_xml.text();
  }
  return result;
}

bool AppcastReader::isOfRss(const char* name) const {
  return m_xml.namespaceUri().isEmpty() && m_xml.name() == QLatin1String(name);
}

void AppcastReader::readItem() {
  if (m_items.size() == kMaxItems) return m_xml.raiseError(QStringLiteral("too many items"));
  AppcastDraft item;
  forEachChild([&] { readChild(item); });
  m_items.push_back(std::move(item));
}

void AppcastReader::readChild(AppcastDraft& item) {
  const bool inNamespace = m_xml.namespaceUri() == kNamespace;
  for (const TextElement& element : kTextElements) {
    if (m_xml.name() != QLatin1String(element.name)) continue;
    if (element.inNamespace ? !inNamespace : !m_xml.namespaceUri().isEmpty()) continue;
    const QString value = text();
    if ((item.*element.field).isNull()) item.*element.field = value;
    return;
  }
  if (isOfRss("description")) return readDescription(item);
  if (isOfRss("enclosure")) return readEnclosure(item);
  if (inNamespace && m_xml.name() == QLatin1String("criticalUpdate")) {
    item.critical = true;
    item.criticalBelow = namespacedAttribute(m_xml, "version");
  } else if (inNamespace && m_xml.name() == QLatin1String("informationalUpdate")) {
    item.informational = true;
  }
  skip();
}

void AppcastReader::readDescription(AppcastDraft& item) {
  const QString format = namespacedAttribute(m_xml, "format");
  const QString value = text();
  if (!item.description.isNull()) return;
  item.description = value;
  item.descriptionFormat = format;
}

void AppcastReader::readEnclosure(AppcastDraft& item) {
  item.enclosures.push_back({.url = QUrl(attribute(m_xml, "url").trimmed()),
                             .length = attribute(m_xml, "length"),
                             .type = attribute(m_xml, "type"),
                             .edSignature = namespacedAttribute(m_xml, "edSignature"),
                             .version = namespacedAttribute(m_xml, "version"),
                             .shortVersion = namespacedAttribute(m_xml, "shortVersionString"),
                             .os = namespacedAttribute(m_xml, "os")});
  skip();
}

}  // namespace zolt
