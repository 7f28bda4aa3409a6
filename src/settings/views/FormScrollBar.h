#pragma once

#include <QScrollBar>

namespace zolt {

/// A thin scroll bar over a form's background: a rounded thumb and nothing else.
class FormScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  /// Its width, in logical pixels.
  static constexpr int breadth = 12;

  explicit FormScrollBar(QWidget* parent);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
};

}  // namespace zolt
