#pragma once

#include <QColor>
#include <QPalette>
#include <initializer_list>

namespace zolt {

/// Blends two opaque colours: `share` 0 is `from`, 1 is `to`.
QColor mixed(const QColor& from, const QColor& to, double share);

/// The contrast ratio of two opaque colours, 1 to 21, as WCAG 2 defines it.
double contrastRatio(const QColor& one, const QColor& other);

/// `color`, blended towards `text` just far enough for a contrast of 4.5 to 1 on all `backgrounds`; `text` itself if no
/// blend is enough.
QColor readable(const QColor& color, std::initializer_list<QColor> backgrounds, const QColor& text);

/// The colours of the controls, derived from a palette, light or dark. Computed on every paint, so that controls follow
/// palette changes.
struct ControlColors {
  explicit ControlColors(const QPalette& palette);

  QColor window;
  QColor card;         ///< background of a section's rows
  QColor hairline;     ///< between rows
  QColor text;         ///< primary text
  QColor secondary;    ///< less important text; readable on the window, on a card, and on a card tinted with a tenth of
                       ///< itself
  QColor accent;       ///< controls that are on or selected
  QColor accentText;   ///< text in the accent colour, readable
  QColor destructive;  ///< text of a destructive button
  QColor off;          ///< a track that is off
  QColor field;        ///< background of a text field, picker or button
  QColor fieldBorder;
  QColor raised;  ///< a knob or the selected segment, on its track
  QColor ring;    ///< focus ring
};

}  // namespace zolt
