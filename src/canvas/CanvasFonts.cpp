#include "canvas/CanvasFonts.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QList>
#include <QString>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "canvas/DrawnSymbols.h"
#include "canvas/LetterFont.h"
#include "canvas/Syllables.h"
#include "text/Utf8.h"

namespace zolt {

namespace {

// Fonts say how thick their underlines are, but not all at every size.
constexpr double kSizePerLinePixel = 14;

// The fonts of colour emoji that systems have, the first that is installed; empty if there is none. Text fonts have
// some emoji too, as outlines, and would be preferred.
const QString& emojiFamily() {
  static const QString family = [] {
    for (const char* name : {"Apple Color Emoji", "Noto Color Emoji", "Twitter Color Emoji", "JoyPixels", "OpenMoji"}) {
      if (QFontDatabase::hasFamily(QLatin1String(name))) return QString::fromLatin1(name);
    }
    return QString();
  }();
  return family;
}

// Whether a cluster is shown as an emoji: a wide one from the blocks of symbols, or one that asks for it (U+FE0F).
bool isEmoji(std::string_view utf8, char32_t first, int columns) {
  constexpr std::string_view kEmojiSelector = "\uFE0F";
  const bool isSymbol = (first >= 0x2300 && first < 0x2C00) || (first >= 0x1F000 && first < 0x1FB00);
  return (isSymbol && columns == 2) || utf8.find(kEmojiSelector) != std::string_view::npos;
}

ClusterShape shapeOf(std::string_view utf8, char32_t first, int columns) {
  if (isEmoji(utf8, first, columns) && !emojiFamily().isEmpty()) return ClusterShape::Emoji;
  return columns > 1 && makesSyllables(first) ? ClusterShape::Syllable : ClusterShape::Letters;
}

}  // namespace

CanvasFonts::CanvasFonts(const CanvasFont& font, double scale) : m_font(font), m_scale(scale) {
  const QFontMetricsF metrics(fontFor(font, font.size * scale));
  const auto whole = [](double pixels) { return DevicePixels(std::max(1L, std::lround(pixels))); };
  const double natural = std::ceil(metrics.lineSpacing());
  const double height = std::max(natural, std::round(font.lineSpacing * font.size * scale));
  m_metrics.width = whole(metrics.horizontalAdvance(QLatin1Char('M')));
  m_metrics.height = DevicePixels(std::max(1, static_cast<int>(height)));
  m_metrics.baseline = whole(metrics.ascent() + metrics.leading() / 2 + std::floor((height - natural) / 2));
  m_metrics.lineThickness = whole(std::max(metrics.lineWidth(), font.size * scale / kSizePerLinePixel));
  m_metrics.underlineTop =
      std::min(m_metrics.height - m_metrics.lineThickness, m_metrics.baseline + whole(metrics.underlinePos()));
  m_metrics.strikethroughTop = m_metrics.baseline - whole(metrics.xHeight() / 2);
}

QFont CanvasFonts::systemFont(double size) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(size))));
  return font;
}

QFont CanvasFonts::fontFor(const CanvasFont& font, double size) {
  QFont wanted = systemFont(size);
  // Asking whether a family is installed would load what all fonts can do.
  if (!font.family.isEmpty()) wanted.setFamilies({font.family, wanted.family()});
  return wanted;
}

CanvasFonts::Face& CanvasFonts::face(FontWeight weight, FontSlant slant) {
  const bool bold = weight == FontWeight::Bold;
  const bool italic = slant == FontSlant::Italic;
  std::optional<Face>& loaded = m_faces[(bold ? 1U : 0U) + (italic ? 2U : 0U)];
  if (!loaded) {
    QFont font = fontFor(m_font, m_font.size * m_scale);
    font.setBold(bold);
    font.setItalic(italic);
    loaded.emplace(font, m_metrics, m_shapingTime);
  }
  return *loaded;
}

CanvasFonts::Face::Face(const QFont& font, const CellMetrics& metrics, ShapingTime& shapingTime)
    : m_font(font), m_raw(QRawFont::fromFont(font)), m_metrics(metrics), m_shapingTime(shapingTime) {}

GlyphMask CanvasFonts::Face::makeMask(char character) const {
  if (character <= ' ' || character > '~') return {};
  const QList<quint32> glyphs = m_raw.glyphIndexesForString(QString(QLatin1Char(character)));
  return glyphs.isEmpty() || glyphs.front() == 0 ? GlyphMask() : GlyphMask::of(m_raw, glyphs.front());
}

const GlyphMask* CanvasFonts::Face::cluster(std::string_view utf8, int columns) {
  std::string key(1, static_cast<char>(columns));
  key += utf8;
  if (const GlyphMask* known = m_clusters.find(key)) return known;
  if (m_shapingTime.isOver()) return nullptr;
  return &m_clusters.add(key, m_shapingTime.spend([&] { return makeCluster(std::string(utf8), columns); }));
}

GlyphMask CanvasFonts::Face::makeCluster(const std::string& utf8, int columns) const {
  std::size_t length = 0;
  const char32_t first = scalarAt(utf8, 0, length);
  if (columns == 1 && length == utf8.size() && isDrawnSymbol(first)) return drawSymbol(first, m_metrics);
  QFont font = m_font;
  const ClusterShape shape = shapeOf(utf8, first, columns);
  if (shape == ClusterShape::Emoji) font.setFamilies(QStringList{emojiFamily()} + font.families());
  const QString text = QString::fromStdString(utf8);
  const ClusterRoom room{
      .width = m_metrics.width * columns, .height = m_metrics.height, .baseline = m_metrics.baseline};
  LetterFont letter;
  // The first that needs rules decides: it may be a mark on a character of another script.
  for (std::size_t at = 0; at < utf8.size() && letter.use == LetterFont::Use::Any; at += length) {
    letter = letterFont(scalarAt(utf8, at, length), m_font);
  }
  switch (letter.use) {
    case LetterFont::Use::Any:
      break;
    case LetterFont::Use::Shaped:
      font.setFamilies(QStringList{letter.font.familyName()} + font.families());
      break;
    case LetterFont::Use::Bare:
      return bareCluster(text, letter.font, room);
    case LetterFont::Use::None:
      return GlyphMask::of(m_raw, 0);  // what the font shows for what it lacks
  }
  return shapedCluster(text, font, room, shape);
}

const GlyphMask* CanvasFonts::Face::ligature(std::string_view ascii) {
  const std::string key(ascii);
  if (const GlyphMask* known = m_ligatures.find(key)) return known;
  if (m_shapingTime.isOver()) return nullptr;
  return &m_ligatures.add(key, m_shapingTime.spend([&] { return makeLigature(ascii); }));
}

// A font makes a ligature by replacing glyphs of the run: one of them is then another than that of its character.
GlyphMask CanvasFonts::Face::makeLigature(std::string_view ascii) const {
  const QString text = QString::fromLatin1(ascii.data(), static_cast<qsizetype>(ascii.size()));
  QTextLayout layout(text, m_font);
  layout.beginLayout();
  layout.createLine();
  layout.endLayout();
  const QList<QGlyphRun> runs = layout.glyphRuns();
  const QList<quint32> plain = m_raw.glyphIndexesForString(text);
  if (runs.size() == 1 && runs.front().glyphIndexes() == plain) return {};
  return shapedCluster(text, m_font,
                       {.width = m_metrics.width * static_cast<int>(ascii.size()),
                        .height = m_metrics.height,
                        .baseline = m_metrics.baseline});
}

}  // namespace zolt
