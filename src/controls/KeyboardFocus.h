#pragma once

#include <QObject>

class QPainter;
class QRectF;
class QWidget;

namespace zolt {

/// Decides whether a widget shows its focus ring: only if the focus came from the keyboard, or a key was pressed since.
/// Focus gained by a click is not shown. A member of its widget, which it repaints. Main thread.
class KeyboardFocus : public QObject {
  Q_OBJECT

 public:
  /// The margin that a control leaves around itself for its ring, in logical pixels.
  static constexpr int margin = 3;

  explicit KeyboardFocus(QWidget& widget);

  bool isShown() const { return m_shown; }
  /// Draws the ring around `shape`, with corners of `radius`, if it is shown.
  void drawRing(QPainter& painter, const QRectF& shape, double radius) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show(bool shown);

  QWidget& m_widget;
  bool m_shown = false;
};

/// Whether a focus change for this reason came from the keyboard.
bool isKeyboardReason(Qt::FocusReason reason);

}  // namespace zolt
