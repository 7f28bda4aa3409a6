#pragma once

#include <cstdint>

#include "controls/TextField.h"

namespace zolt {

/// A field for a whole number. What is typed counts when it is finished, by Return or by leaving the field; a text that
/// is no number is then replaced by the number that was shown before. Escape takes back what is not finished.
class NumberField : public TextField {
  Q_OBJECT

 public:
  explicit NumberField(QWidget* parent = nullptr);

  /// Shows a number; `chosen` is not emitted. What the user is typing just then stays.
  void setNumber(std::int64_t number);

 Q_SIGNALS:
  /// After the user gave another number than the one shown before.
  void chosen(std::int64_t number);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void finish();
  void showNumber(std::int64_t number);

  std::int64_t m_number = 0;
};

}  // namespace zolt
