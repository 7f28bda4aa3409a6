#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// A knob in a track that is on or off: `toggled` tells of a change. The accent colour shows that it is on.
class Switch : public QAbstractButton {
  Q_OBJECT

 public:
  enum class Kind {
    Movable,
    Fixed,  ///< shows its value and looks alive, but nothing that the user does moves it
  };

  explicit Switch(Kind kind = Kind::Movable, QWidget* parent = nullptr);

  bool isFixed() const { return m_kind == Kind::Fixed; }
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void nextCheckState() override;
  void checkStateSet() override;
  bool hitButton(const QPoint& position) const override;

 private:
  void moveKnob();

  Kind m_kind;
  KeyboardFocus m_focus{*this};
  QVariantAnimation m_knob;  // where it is: 0 off, 1 on
};

}  // namespace zolt
