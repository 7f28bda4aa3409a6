#include "view/canvas/CanvasFonts.h"

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

CanvasFonts::LoadedFace& CanvasFonts::face(FontWeight weight, FontSlant slant) {
  const bool bold = weight == FontWeight::Bold;
  const bool italic = slant == FontSlant::Italic;
  std::optional<LoadedFace>& loaded = m_faces[(bold ? 1U : 0U) + (italic ? 2U : 0U)];
  if (!loaded) {
    QFont font = systemFont(m_size * m_scale);
    font.setBold(bold);
    font.setItalic(italic);
    loaded.emplace();
    loaded->font = QRawFont::fromFont(font);
    for (char character = '!'; character <= '~'; ++character) {
      const QList<quint32> glyphs = loaded->font.glyphIndexesForString(QString(QLatin1Char(character)));
      if (!glyphs.isEmpty()) loaded->glyphs[static_cast<std::size_t>(character)] = glyphs.front();
    }
  }
  return *loaded;
}

const QRawFont& CanvasFonts::font(FontWeight weight, FontSlant slant) {
  return face(weight, slant).font;
}

std::uint32_t CanvasFonts::glyph(FontWeight weight, FontSlant slant, char character) {
  const auto index = static_cast<unsigned char>(character);
  return index < 128 ? face(weight, slant).glyphs[index] : 0;
}

}  // namespace zolt
