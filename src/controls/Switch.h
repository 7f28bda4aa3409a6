#pragma once

#include <QAbstractButton>
#include <QVariantAnimation>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// An on/off switch: a knob in a track, which has the accent colour when it is on. `toggled` reports changes.
class Switch : public QAbstractButton {
  Q_OBJECT

 public:
  enum class Kind {
    Movable,
    Fixed,  ///< looks enabled, but ignores the user
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
  QVariantAnimation m_knob;  // its position: 0 off, 1 on
};

}  // namespace zolt
