#pragma once

#include <QString>
#include <QWidget>

#include "controls/SecondaryLabel.h"
#include "controls/Slider.h"

namespace zolt {

/// A slider beside the text of its value, which has 50 pixels, or more for large text. It shows any value, even one
/// between or beyond the slider's positions, and emits only values that the user chose.
class SliderRow : public QWidget {
  Q_OBJECT

 public:
  using Text = QString (*)(double value);

  SliderRow(const SliderScale& scale, Text text, QWidget* parent = nullptr);

  /// Shows a value without emitting `chosen`.
  void setValue(double value);
  Slider& slider() { return *m_slider; }
  QString valueText() const { return m_text->text(); }

 Q_SIGNALS:
  /// The user chose a value other than the one shown.
  void chosen(double value);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void fitText();

  SliderScale m_scale;
  Text m_textOf;
  Slider* m_slider;
  SecondaryLabel* m_text;
  double m_value = 0;
};

}  // namespace zolt
