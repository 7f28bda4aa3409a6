#pragma once

#include <QAbstractItemDelegate>

namespace zolt {

/// Draws the rows of a BrewListModel: headers and packages.
class BrewRowDelegate : public QAbstractItemDelegate {
  Q_OBJECT

 public:
  using QAbstractItemDelegate::QAbstractItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  void measure(const QFont& font) const;

  // Measured once per font: a list may have thousands of rows.
  mutable QFont m_measured;
  mutable int m_headerHeight = 0;
  mutable int m_shortHeight = 0;
  mutable int m_tallHeight = 0;
};

}  // namespace zolt
