#pragma once

#include <QLineEdit>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// A line of text in a rounded border.
class TextField : public QLineEdit {
  Q_OBJECT

 public:
  explicit TextField(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  KeyboardFocus m_focus{*this};
};

}  // namespace zolt
