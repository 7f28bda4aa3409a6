#pragma once

#include <QWidget>

namespace zolt {

/// Shows where something that is being dragged would come to be. Main thread.
class DropMark : public QWidget {
  Q_OBJECT

 public:
  explicit DropMark(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace zolt
