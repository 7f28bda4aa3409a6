#pragma once

#include <QLabel>

namespace zolt {

/// One line of plain text in the secondary colour. Text that does not fit is elided, and shown in full in a tooltip.
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
