#include "updates/ReleaseNotes.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <random>
#include <utility>

#include "updates/views/NotesView.h"

namespace zolt {
namespace {

using Format = ReleaseNotes::Format;

std::string inert(const char* html) {
  return inertHtml(QString::fromUtf8(html)).toStdString();
}

TEST(ReleaseNotes, AreTruncatedWhenTheyAreExcessivelyLong) {
  const QString endless(1'000'000, u'x');
  for (const Format format : {Format::Plain, Format::Html}) {
    NotesView view;
    view.showNotes({.format = format, .text = endless});
    EXPECT_EQ(view.toPlainText().size(), 32 * 1024 + 1);
    EXPECT_TRUE(view.toPlainText().endsWith(QChar(0x2026)));
  }
}

TEST(ReleaseNotes, AreInterpretedByTheirMediaType) {
  EXPECT_EQ(releaseNotesOf("a", QStringLiteral("text/plain; charset=utf-8")).format, Format::Plain);
  EXPECT_EQ(releaseNotesOf("a", QStringLiteral("Text/Plain")).format, Format::Plain);
  EXPECT_EQ(releaseNotesOf("a", QStringLiteral("text/html")).format, Format::Html);
  EXPECT_EQ(releaseNotesOf("a", QString()).format, Format::Html);
}

TEST(ReleaseNotes, AreDecodedByTheirCharacterSet) {
  const QString expected = QString::fromUtf8("é");
  EXPECT_EQ(releaseNotesOf("\xc3\xa9", QStringLiteral("text/plain")).text, expected);
  EXPECT_EQ(releaseNotesOf("\xe9", QStringLiteral("text/plain; charset=\"iso-8859-1\"")).text, expected);
  EXPECT_EQ(releaseNotesOf("\xc3\xa9", QStringLiteral("text/plain; charset=nonsense")).text, expected);
  EXPECT_TRUE(releaseNotesOf("<meta charset=\"iso-8859-1\">\xe9", QStringLiteral("text/html")).text.endsWith(expected));
}

TEST(InertHtml, KeepsTextAndItsStructure) {
  EXPECT_EQ(inert("<h2>New</h2><ul><li>a &amp; b</li></ul><p class=x>One<br/>two</p>"),
            "<h3>New</h3><ul><li>a &amp; b</li></ul><p>One<br>two</p>");
  EXPECT_EQ(inert("1 < 2 > 0"), "1 &lt; 2 &gt; 0");
  EXPECT_EQ(inert("<table><tr><td>x</td></tr></table>"), "<p>x</p>");
}

TEST(InertHtml, RemovesEverythingThatIsLoadedExecutedOrStyled) {
  const std::pair<const char*, const char*> cases[] = {
      {"a<img src=https://e.org/x.png>b", "ab"},
      {"a<script>alert('</b>')</script>b", "ab"},
      {"a<SCRIPT>x</Script >b", "ab"},
      {"a<script>never ends", "a"},
      {"<style>@import url(x)</style>b", "b"},
      {"<head><title>t</title></head>b", "b"},
      {"<link rel=stylesheet href=x>b", "b"},
      {"<p style=\"background:url(x)\" onclick=x>b</p>", "<p>b</p>"},
      {"<body background=x>b</body>", "b"},
      {"a<!-- <b> -->b", "ab"},
      {"a<!-- never ends", "a"},
      {"<?php x ?>b", "b"},
      {"<svg><a>x</a></svg>b", "b"},
      {"<p title='>'>b", "<p>b</p>"},
      {"<p title=\"<img src=x>\">b", "<p>b</p>"},
      {"<iframe src=x></iframe>b", "b"},
      {"b<img src=x", "b"},
  };
  for (const auto& [html, expected] : cases) {
    EXPECT_EQ(inert(html), expected) << html;
  }
}

TEST(InertHtml, KeepsOnlyLinksToWebPages) {
  EXPECT_EQ(inert("<a href='https://e.org/?a=1&amp;b=2'>x</a>"), "<a href=\"https://e.org/?a=1&amp;b=2\">x</a>");
  EXPECT_EQ(inert("<a target=_blank href=http://e.org/>x</a>"), "<a href=\"http://e.org/\">x</a>");
  for (const char* address :
       {"javascript:alert(1)", "file:///etc/passwd", "data:text/html,x", "../x", "//e.org/", "https:", ""}) {
    EXPECT_EQ(inert((std::string("<a href=\"") + address + "\">x</a>").c_str()), "<a>x</a>") << address;
  }
}

TEST(InertHtml, IsBalancedAndOfLimitedDepth) {
  EXPECT_EQ(inert("<b><i>x</b>y</i>"), "<b><i>x</i></b>y");
  EXPECT_EQ(inert("</p>x<ul>"), "x<ul></ul>");
  const QString nested = inertHtml(QString(QStringLiteral("<blockquote>")).repeated(5000) + QStringLiteral("x"));
  EXPECT_EQ(nested.count(QLatin1String("<blockquote>")), 24);
  EXPECT_EQ(nested.count(QLatin1String("</blockquote>")), 24);
}

TEST(InertHtml, HasOnlyKnownTagsWhateverTheInput) {
  const char* const parts[] = {
      "<",    ">", "</", "<a href=", "'", "\"", "<img src=x",     "<!--",   "-->",      "<script", "</script>", "<b>",
      "</b>", "&", "x",  " ",        "/", "=",  "https://e.org/", "<table", "<ul><li>", "<?",      "<!"};
  static const QRegularExpression known(
      QStringLiteral("</?(?:p|h[2-5]|ul|ol|li|b|i|u|code|pre|blockquote|br|hr|a)>|<a href=\"https?://[^\"<>]*\">"));
  std::mt19937 random(1);
  for (int i = 0; i < 20000; ++i) {
    QString html;
    for (unsigned length = random() % 30; length > 0; --length) {
      html += QString::fromLatin1(parts[random() % std::size(parts)]);
    }
    QString rest = inertHtml(html);
    rest.remove(known);
    ASSERT_FALSE(rest.contains(u'<') || rest.contains(u'>')) << html.toStdString() << " became " << rest.toStdString();
  }
}

}  // namespace
}  // namespace zolt
