#pragma once

#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QString>
#include <QWheelEvent>
#include <string>

#include "canvas/CanvasCell.h"
#include "canvas/CanvasPixels.h"

namespace zolt {

/// Where the pointer is: a cell of the rows in view, and the pixel of the text area, both from the top left of the
/// first row that belongs to the screen. May lie outside of it, where a button that is held was dragged.
struct PointerPlace {
  CanvasRow row;
  CanvasColumn column;
  DevicePoint pixel;
};

/// Takes what the user enters into a canvas. Called on the main thread.
class CanvasInput {
 public:
  virtual ~CanvasInput() = default;

  /// Whether a key that is a shortcut of the window is to come here instead.
  virtual bool claimsKey(const QKeyEvent&) const { return false; }
  /// A key was pressed or repeats. Shortcuts of the window and keys that compose text do not get here.
  virtual void keyPressed(const QKeyEvent& event) = 0;
  virtual void keyReleased(const QKeyEvent&) {}
  /// An input method committed text; never empty.
  virtual void textCommitted(const QString& text) = 0;
  /// Text was pasted; never empty.
  virtual void textPasted(const QString& text) = 0;

  /// A button was pressed, double-clicked or released, or the pointer moved. True: the program takes it, and the canvas
  /// does nothing with it.
  virtual bool pointerUsed(const QMouseEvent&, const PointerPlace&) { return false; }
  /// Whether the program would take the pointer, so that Shift only keeps it from doing so.
  virtual bool wantsPointer() const { return false; }
  /// Whether the program has a button that was pressed, and not released yet.
  virtual bool holdsPointer() const { return false; }
  /// The wheel was turned, or a touch pad scrolled; `rowHeight` in logical pixels. True as above.
  virtual bool wheelTurned(const QWheelEvent&, const PointerPlace&, double /*rowHeight*/) { return false; }
  /// The canvas has gained or lost the keyboard.
  virtual void focusChanged(bool) {}
  /// Whether something can be dropped here, and that it was.
  virtual bool canDrop(const QMimeData&) const { return false; }
  virtual void dropped(const QMimeData&) {}
  /// A link's target as it can be shown without deceiving anybody.
  virtual QString shownTarget(const std::string& target) const { return QString::fromStdString(target); }
  /// A link was opened by the user.
  virtual void linkOpened(const std::string& /*target*/) {}
};

}  // namespace zolt
