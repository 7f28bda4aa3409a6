#include "canvas/CanvasFonts.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QList>
#include <QString>
#include <algorithm>
#include <cmath>

namespace zolt {

CanvasFonts::CanvasFonts(double size, double scale) : m_size(size), m_scale(scale) {
  const QFontMetricsF metrics(systemFont(size * scale));
  const auto whole = [](double pixels) { return DevicePixels(std::max(1L, std::lround(pixels))); };
  m_metrics.width = whole(metrics.horizontalAdvance(QLatin1Char('M')));
  m_metrics.height = DevicePixels(std::max(1, static_cast<int>(std::ceil(metrics.lineSpacing()))));
  m_metrics.baseline = whole(metrics.ascent() + metrics.leading() / 2);
  m_metrics.lineThickness = whole(metrics.lineWidth());
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

CanvasFonts::Face& CanvasFonts::face(FontWeight weight, FontSlant slant) {
  const bool bold = weight == FontWeight::Bold;
  const bool italic = slant == FontSlant::Italic;
  std::optional<Face>& loaded = m_faces[(bold ? 1U : 0U) + (italic ? 2U : 0U)];
  if (!loaded) {
    QFont font = systemFont(m_size * m_scale);
    font.setBold(bold);
    font.setItalic(italic);
    loaded.emplace(font);
  }
  return *loaded;
}

CanvasFonts::Face::Face(const QFont& font) : m_font(QRawFont::fromFont(font)) {}

GlyphMask CanvasFonts::Face::makeMask(char character) const {
  if (character <= ' ' || character > '~') return {};
  const QList<quint32> glyphs = m_font.glyphIndexesForString(QString(QLatin1Char(character)));
  return glyphs.isEmpty() || glyphs.front() == 0 ? GlyphMask() : GlyphMask::of(m_font, glyphs.front());
}

}  // namespace zolt
