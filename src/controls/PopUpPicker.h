#pragma once

#include <QComboBox>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// A choice from a menu that pops up. Blank while nothing is chosen.
class PopUpPicker : public QComboBox {
  Q_OBJECT

 public:
  explicit PopUpPicker(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  KeyboardFocus m_focus{*this};
};

}  // namespace zolt
