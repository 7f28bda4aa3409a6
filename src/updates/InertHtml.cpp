#include <QList>
#include <QRegularExpression>
#include <QUrl>
#include <algorithm>

#include "updates/ReleaseNotes.h"

namespace zolt {

namespace {

constexpr qsizetype kMaxNesting = 24;

struct Tag {
  QLatin1String name;
  QLatin1String becomes;
};

// The elements kept in release notes, and what each becomes. The tags of all others are dropped.
constexpr Tag kTags[] = {
    {QLatin1String("p"), QLatin1String("p")},       {QLatin1String("div"), QLatin1String("p")},
    {QLatin1String("section"), QLatin1String("p")}, {QLatin1String("article"), QLatin1String("p")},
    {QLatin1String("tr"), QLatin1String("p")},      {QLatin1String("h1"), QLatin1String("h2")},
    {QLatin1String("h2"), QLatin1String("h3")},     {QLatin1String("h3"), QLatin1String("h4")},
    {QLatin1String("h4"), QLatin1String("h5")},     {QLatin1String("h5"), QLatin1String("h5")},
    {QLatin1String("h6"), QLatin1String("h5")},     {QLatin1String("ul"), QLatin1String("ul")},
    {QLatin1String("ol"), QLatin1String("ol")},     {QLatin1String("li"), QLatin1String("li")},
    {QLatin1String("b"), QLatin1String("b")},       {QLatin1String("strong"), QLatin1String("b")},
    {QLatin1String("i"), QLatin1String("i")},       {QLatin1String("em"), QLatin1String("i")},
    {QLatin1String("u"), QLatin1String("u")},       {QLatin1String("code"), QLatin1String("code")},
    {QLatin1String("pre"), QLatin1String("pre")},   {QLatin1String("blockquote"), QLatin1String("blockquote")},
    {QLatin1String("br"), QLatin1String("br")},     {QLatin1String("hr"), QLatin1String("hr")},
    {QLatin1String("a"), QLatin1String("a")},
};

// Elements whose content is dropped, too.
constexpr QLatin1String kHidden[] = {
    QLatin1String("script"),   QLatin1String("style"),  QLatin1String("head"),     QLatin1String("title"),
    QLatin1String("template"), QLatin1String("svg"),    QLatin1String("math"),     QLatin1String("iframe"),
    QLatin1String("object"),   QLatin1String("select"), QLatin1String("textarea"), QLatin1String("noscript"),
};

class Reducer {
 public:
  explicit Reducer(const QString& html) : m_html(html) {}

  QString reduced() {
    while (m_at < m_html.size()) {
      const qsizetype tag = m_html.indexOf(u'<', m_at);
      takeText(tag < 0 ? m_html.size() : tag);
      if (tag >= 0) takeTag();
    }
    closeDownTo(0);
    return m_result;
  }

 private:
  // Character references such as "&amp;" are kept.
  void takeText(qsizetype end) {
    for (; m_at < end; ++m_at) {
      const QChar character = m_html[m_at];
      if (character == u'>') {
        m_result += QLatin1String("&gt;");
      } else if (!character.isNull()) {
        m_result += character;
      }
    }
  }

  bool continuesWith(QLatin1String text) const { return QStringView(m_html).sliced(m_at).startsWith(text); }

  void skipPast(QLatin1String text) {
    const qsizetype found = m_html.indexOf(text, m_at, Qt::CaseInsensitive);
    m_at = found < 0 ? m_html.size() : found + text.size();
  }

  // At "<".
  void takeTag() {
    if (continuesWith(QLatin1String("<!--"))) return skipPast(QLatin1String("-->"));
    if (continuesWith(QLatin1String("<!")) || continuesWith(QLatin1String("<?"))) return skipPast(QLatin1String(">"));
    qsizetype nameStart = m_at + 1;
    const bool isClosing = nameStart < m_html.size() && m_html[nameStart] == u'/';
    if (isClosing) ++nameStart;
    qsizetype nameEnd = nameStart;
    while (nameEnd < m_html.size() && m_html[nameEnd].isLetterOrNumber()) {
      ++nameEnd;
    }
    if (nameEnd == nameStart) {
      m_result += QLatin1String("&lt;");
      ++m_at;
      return;
    }
    const QString name = m_html.sliced(nameStart, nameEnd - nameStart).toLower();
    const qsizetype end = endOfTag(nameEnd);
    const QString attributes = m_html.sliced(nameEnd, end - nameEnd);
    m_at = std::min(end + 1, m_html.size());
    if (!isClosing && std::ranges::find(kHidden, name) != std::end(kHidden)) {
      if (!attributes.endsWith(u'/')) skipHidden(name);
      return;
    }
    const auto* const tag = std::ranges::find(kTags, name, &Tag::name);
    if (tag == std::end(kTags)) return;
    isClosing ? closeTag(tag->becomes) : openTag(tag->becomes, attributes);
  }

  // The position of the ">" that ends a tag; quoted ones belong to attributes.
  qsizetype endOfTag(qsizetype from) const {
    QChar quote;
    for (qsizetype i = from; i < m_html.size(); ++i) {
      const QChar character = m_html[i];
      if (!quote.isNull()) {
        if (character == quote) quote = QChar();
      } else if (character == u'"' || character == u'\'') {
        quote = character;
      } else if (character == u'>') {
        return i;
      }
    }
    return m_html.size();
  }

  void skipHidden(const QString& name) {
    const qsizetype found = m_html.indexOf(QLatin1String("</") + name, m_at, Qt::CaseInsensitive);
    m_at = found < 0 ? m_html.size() : found;
    if (found >= 0) skipPast(QLatin1String(">"));
  }

  void openTag(QLatin1String name, const QString& attributes) {
    if (name == QLatin1String("br") || name == QLatin1String("hr")) {
      m_result += QLatin1Char('<') + name + QLatin1Char('>');
      return;
    }
    if (m_open.size() >= kMaxNesting) return;
    const QString page = name == QLatin1String("a") ? pageOf(attributes) : QString();
    m_open.append(name);
    m_result += QLatin1Char('<') + name;
    if (!page.isEmpty()) m_result += QLatin1String(" href=\"") + page.toHtmlEscaped() + QLatin1Char('"');
    m_result += QLatin1Char('>');
  }

  void closeTag(QLatin1String name) {
    const qsizetype index = m_open.lastIndexOf(name);
    if (index >= 0) closeDownTo(index);
  }

  void closeDownTo(qsizetype count) {
    while (m_open.size() > count) {
      m_result += QLatin1String("</") + m_open.takeLast() + QLatin1Char('>');
    }
  }

  static QString pageOf(const QString& attributes) {
    static const QRegularExpression href(QStringLiteral("\\shref\\s*=\\s*(?:\"([^\"]*)\"|'([^']*)'|([^\\s\"'>]+))"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = href.match(attributes);
    QString address = match.captured(match.lastCapturedIndex());
    address.replace(QLatin1String("&amp;"), QLatin1String("&"));
    const QUrl url(address.trimmed(), QUrl::StrictMode);
    const bool isPage = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    return isPage && url.isValid() && !url.host().isEmpty() ? url.toString(QUrl::FullyEncoded) : QString();
  }

  const QString& m_html;
  qsizetype m_at = 0;
  QString m_result;
  QList<QLatin1String> m_open;
};

}  // namespace

QString inertHtml(const QString& html) {
  return Reducer(html).reduced();
}

}  // namespace zolt
