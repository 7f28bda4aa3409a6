#pragma once

#include <QObject>

class QPainter;
class QRectF;
class QWidget;

namespace zolt {

/// Whether a widget has the keyboard's focus in a way that is to be shown: it came by the keyboard, or the keyboard was
/// used since. Focus that came by a mouse click stays unseen. A member of its widget, which it repaints. Main thread.
class KeyboardFocus : public QObject {
  Q_OBJECT

 public:
  /// How far outside a control its ring is drawn, in logical pixels: the margin that a control leaves around itself.
  static constexpr int margin = 3;

  explicit KeyboardFocus(QWidget& widget);

  bool isShown() const { return m_shown; }
  /// The ring around `shape`, rounded by `radius`, when it is shown.
  void drawRing(QPainter& painter, const QRectF& shape, double radius) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show(bool shown);

  QWidget& m_widget;
  bool m_shown = false;
};

/// Whether focus that came for this reason came by the keyboard.
bool isKeyboardReason(Qt::FocusReason reason);

}  // namespace zolt
