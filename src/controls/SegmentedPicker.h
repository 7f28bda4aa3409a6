#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QStringList>
#include <QWidget>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// One choice of a SegmentedPicker.
class Segment : public QAbstractButton {
  Q_OBJECT

 public:
  Segment(const QString& label, QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  KeyboardFocus m_focus{*this};
};

/// Mutually exclusive choices side by side in a rounded track. It is one tab stop; the arrow keys move the selection.
class SegmentedPicker : public QWidget {
  Q_OBJECT

 public:
  explicit SegmentedPicker(const QStringList& labels, QWidget* parent = nullptr);

  int currentIndex() const { return m_group.checkedId(); }
  /// Selects a segment without emitting `picked`.
  void setCurrentIndex(int index);
  Segment* segment(int index) const { return static_cast<Segment*>(m_group.button(index)); }

 Q_SIGNALS:
  /// The user selected another segment.
  void picked(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QButtonGroup m_group;
  int m_shown = -1;
};

}  // namespace zolt
