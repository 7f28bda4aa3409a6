#pragma once

#include <QLabel>
#include <QString>

namespace zolt {

/// Tells in a corner of its parent where the link under the pointer leads. The mouse goes through it.
class LinkLabel : public QLabel {
  Q_OBJECT

 public:
  explicit LinkLabel(QWidget* parent);

  /// Shows `target` in the lower left corner, shortened to the parent's width; in the right one if `pointer`, in the
  /// parent's coordinates, is near the left.
  void showTarget(const QString& target, const QPoint& pointer);
};

}  // namespace zolt
