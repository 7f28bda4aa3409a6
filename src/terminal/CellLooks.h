#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "canvas/CanvasStyle.h"
#include "canvas/CellLook.h"
#include "vt/cells/Style.h"
#include "vt/state/Palette.h"
#include "vt/theme/ResolvedColors.h"

namespace zolt {

/// The looks of the full emulation's styles with one palette; those that are in use are resolved once. Main thread.
class CellLooks {
 public:
  /// True if looks from before may be others now.
  bool setPalette(const std::shared_ptr<const vt::Palette>& palette, bool reverseScreen);
  /// The share of the background that is not see-through, 0...1, and what else the user has set.
  void setOptions(const vt::ResolveOptions& options, double opacity);

  /// `isGraphic`: the cell is a picture rather than text; see vt::ResolveOptions.
  CellLook look(const vt::Style& style, bool isGraphic);
  /// The colours around the text; `selection` is the theme's.
  CanvasColors colors(QRgb selection) const;
  QRgb cursorColor() const;

  /// Changes with everything that looks depend on.
  std::uint64_t version() const { return m_version; }

 private:
  CellLook resolved(const vt::Style& style, bool isGraphic) const;

  struct Resolved {
    vt::Style style;
    CellLook look;
    bool isGraphic = false;
    std::uint64_t version = 0;  // of a version before: out of date
  };
  // A table in which each style has one place, that of the style that came last. More places than most screens have
  // styles; a program that never repeats one costs no more than resolving it.
  static constexpr std::size_t kPlaces = 8192;

  std::shared_ptr<const vt::Palette> m_palette = std::make_shared<const vt::Palette>();
  vt::ResolveOptions m_options;
  double m_opacity = 1;
  std::uint64_t m_version = 1;
  std::vector<Resolved> m_resolved = std::vector<Resolved>(kPlaces);
};

QRgb toRgb(const vt::Rgb& color);

}  // namespace zolt
