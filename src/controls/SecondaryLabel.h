#pragma once

#include <QLabel>

namespace zolt {

/// Plain text in the secondary colour, on one line: text that does not fit is elided, and shown in full in a tooltip.
/// With word wrap it has as many lines as it needs.
class SecondaryLabel : public QLabel {
  Q_OBJECT

 public:
  explicit SecondaryLabel(const QString& text, QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
};

}  // namespace zolt
