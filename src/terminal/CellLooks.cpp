#include "terminal/CellLooks.h"

#include <cmath>
#include <utility>

namespace zolt {

namespace {

static_assert(static_cast<int>(LineStyle::Dashed) == static_cast<int>(vt::Underline::Dashed));

bool has(const vt::Style& style, std::uint16_t flags) {
  return (style.flags & flags) != 0;
}

}  // namespace

QRgb toRgb(const vt::Rgb& color) {
  return qRgb(color.red, color.green, color.blue);
}

bool CellLooks::setPalette(const std::shared_ptr<const vt::Palette>& palette, bool reverseScreen) {
  if (palette == m_palette && reverseScreen == m_options.reverseScreen) return false;
  m_palette = palette;
  m_options.reverseScreen = reverseScreen;
  ++m_version;
  return true;
}

void CellLooks::setOptions(const vt::ResolveOptions& options, double opacity) {
  const bool reverseScreen = std::exchange(m_options, options).reverseScreen;
  m_options.reverseScreen = reverseScreen;
  m_opacity = opacity;
  ++m_version;
}

CellLook CellLooks::resolved(const vt::Style& style, bool isGraphic) const {
  vt::ResolveOptions options = m_options;
  options.isGraphic = isGraphic;
  const vt::ResolvedColors colors = vt::resolve(style, *m_palette, options);
  CellLook look;
  look.foreground = has(style, vt::kHidden) ? 0 : toRgb(colors.foreground);
  look.background = colors.background ? toRgb(*colors.background) : 0;
  look.underlineColor = toRgb(colors.underline);
  look.weight = has(style, vt::kBold) ? FontWeight::Bold : FontWeight::Regular;
  look.slant = has(style, vt::kItalic) ? FontSlant::Italic : FontSlant::Upright;
  look.underline = static_cast<LineStyle>(style.underline);
  look.struck = has(style, vt::kStruck);
  look.overlined = has(style, vt::kOverlined);
  look.blinks = has(style, vt::kBlink | vt::kRapidBlink);
  return look;
}

CellLook CellLooks::look(const vt::Style& style, bool isGraphic) {
  Resolved& known = m_resolved[(vt::StyleHash()(style) + (isGraphic ? 1 : 0)) % kPlaces];
  if (known.version != m_version || known.isGraphic != isGraphic || known.style != style) {
    known = {.style = style, .look = resolved(style, isGraphic), .isGraphic = isGraphic, .version = m_version};
  }
  return known.look;
}

CanvasColors CellLooks::colors(QRgb selection) const {
  const QRgb ground = toRgb(vt::groundColor(*m_palette, m_options.reverseScreen));
  const auto alpha = static_cast<int>(std::lround(m_opacity * 255));
  return {.background = qRgba(qRed(ground), qGreen(ground), qBlue(ground), alpha),
          .text = toRgb(m_palette->role(vt::Palette::Role::Foreground)),
          .selection = selection};
}

QRgb CellLooks::cursorColor() const {
  return toRgb(m_palette->role(vt::Palette::Role::Cursor));
}

}  // namespace zolt
