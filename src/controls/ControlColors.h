#pragma once

#include <QColor>
#include <QPalette>
#include <initializer_list>

namespace zolt {

/// `from` on the way to `to`: 0 is `from`, 1 is `to`. Both opaque.
QColor mixed(const QColor& from, const QColor& to, double share);

/// The contrast ratio of two opaque colours, 1 to 21, as WCAG 2 defines it.
double contrastRatio(const QColor& one, const QColor& other);

/// `color`, moved towards `text` as far as it takes to be read on all of `backgrounds` (4.5 to 1); `text` when nothing
/// less will do.
QColor readable(const QColor& color, std::initializer_list<QColor> backgrounds, const QColor& text);

/// The colours of a form, all made from a palette, for a light and a dark one alike. Made anew for each painting, so
/// that a form follows its palette.
struct ControlColors {
  explicit ControlColors(const QPalette& palette);

  QColor window;
  QColor card;       ///< behind the rows of a section
  QColor hairline;   ///< between rows
  QColor text;       ///< of a control or a row
  QColor secondary;  ///< of what is less important; readable on the window, on a card, and on its own tenth over a card
  QColor accent;     ///< of what is on or chosen
  QColor accentText;   ///< the accent as a text's colour
  QColor destructive;  ///< of the text of a button that throws something away
  QColor off;          ///< the track of what is not on
  QColor field;        ///< inside a text field, a picker, a button
  QColor fieldBorder;
  QColor raised;  ///< what lies in a track: a knob's or a chosen segment's
  QColor ring;    ///< around the control that the keyboard goes to
};

}  // namespace zolt
