#pragma once

#include <QPushButton>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// A button for a destructive action: its text is red.
class DestructiveButton : public QPushButton {
  Q_OBJECT

 public:
  explicit DestructiveButton(const QString& text, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  KeyboardFocus m_focus{*this};
};

}  // namespace zolt
