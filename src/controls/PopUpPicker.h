#pragma once

#include <QComboBox>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// A pop-up list of choices. Blank while nothing is selected.
class PopUpPicker : public QComboBox {
  Q_OBJECT

 public:
  enum class Tone { Primary, Secondary };

  explicit PopUpPicker(QWidget* parent = nullptr);

  /// The colour of the selected choice; initially primary.
  void setTone(Tone tone);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  void showPopup() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  KeyboardFocus m_focus{*this};
  Tone m_tone = Tone::Primary;
};

}  // namespace zolt
