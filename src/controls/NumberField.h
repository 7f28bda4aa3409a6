#pragma once

#include <cstdint>

#include "controls/TextField.h"

namespace zolt {

/// A field for a whole number. Return or leaving the field commits what was typed; text that is not a number reverts to
/// the previous number, and so does Escape.
class NumberField : public TextField {
  Q_OBJECT

 public:
  explicit NumberField(QWidget* parent = nullptr);

  /// Shows a number without emitting `chosen`. Does not disturb text that is being edited.
  void setNumber(std::int64_t number);
  /// From now on, a number below 1 stands for no limit, and is shown as an empty field with a placeholder. A field that
  /// is emptied, or a number below 1 that is typed, is -1.
  void allowNoLimit(const QString& placeholder);

 Q_SIGNALS:
  /// The user committed a different number.
  void chosen(std::int64_t number);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void finish();
  void showNumber(std::int64_t number);
  std::int64_t typedNumber() const;

  std::int64_t m_number = 0;
  bool m_allowsNoLimit = false;
};

}  // namespace zolt
