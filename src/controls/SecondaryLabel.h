#pragma once

#include <QLabel>

namespace zolt {

/// One line of plain text in the secondary colour of its palette; cut short where it does not fit, and then whole in
/// its tooltip.
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
