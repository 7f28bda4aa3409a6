#pragma once

#include <QString>
#include <QWidget>

#include "controls/SecondaryLabel.h"
#include "controls/Slider.h"

namespace zolt {

/// A slider and the text of its value, 50 wide, side by side. It shows whatever value it is given, also one that no
/// position of the slider stands for, and gives back only what the user chose.
class SliderRow : public QWidget {
  Q_OBJECT

 public:
  using Text = QString (*)(double value);

  SliderRow(const SliderScale& scale, Text text, QWidget* parent = nullptr);

  /// Shows a value; `chosen` is not emitted.
  void setValue(double value);
  Slider& slider() { return *m_slider; }
  QString valueText() const { return m_text->text(); }

 Q_SIGNALS:
  /// After the user chose another value than the one shown.
  void chosen(double value);

 private:
  SliderScale m_scale;
  Text m_textOf;
  Slider* m_slider;
  SecondaryLabel* m_text;
  double m_value = 0;
};

}  // namespace zolt
