#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "canvas/CanvasStyle.h"
#include "canvas/CellLook.h"
#include "vt/cells/Style.h"
#include "vt/state/Palette.h"
#include "vt/theme/ResolvedColors.h"

namespace zolt {

/// The looks of the full emulation's styles with one palette, each resolved once. Main thread.
class CellLooks {
 public:
  /// True if looks from before may be others now.
  bool setPalette(const std::shared_ptr<const vt::Palette>& palette, bool reverseScreen);
  /// The share of the background that is not see-through, 0...1, and what else the user has set.
  void setOptions(const vt::ResolveOptions& options, double opacity);

  /// `isGraphic`: the cell is a picture rather than text; see vt::ResolveOptions.
  const CellLook& look(const vt::Style& style, bool isGraphic);
  /// The colours around the text; `selection` is the theme's.
  CanvasColors colors(QRgb selection) const;
  QRgb cursorColor() const;

  /// Changes with everything that looks depend on.
  std::uint64_t version() const { return m_version; }

 private:
  CellLook resolved(const vt::Style& style, bool isGraphic) const;
  void forget();

  // More styles than a screen can show: those of programs that never repeat one are resolved again.
  static constexpr std::size_t kMaxLooks = 16384;

  std::shared_ptr<const vt::Palette> m_palette = std::make_shared<const vt::Palette>();
  vt::ResolveOptions m_options;
  double m_opacity = 1;
  std::uint64_t m_version = 0;
  std::unordered_map<vt::Style, CellLook, vt::StyleHash> m_looks;
  std::unordered_map<vt::Style, CellLook, vt::StyleHash> m_graphicLooks;
};

QRgb toRgb(const vt::Rgb& color);

}  // namespace zolt
