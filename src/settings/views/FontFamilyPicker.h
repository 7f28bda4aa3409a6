#pragma once

#include <string>

#include "controls/PopUpPicker.h"

namespace zolt {

/// Selects a fixed-pitch font family of the system, by name. Another name is kept and shown, and offered as long as it
/// is the selected one.
class FontFamilyPicker : public PopUpPicker {
  Q_OBJECT

 public:
  explicit FontFamilyPicker(QWidget* parent = nullptr);

  /// Selects a family without emitting `chosen`. An empty name selects nothing.
  void setFamily(const std::string& family);

 Q_SIGNALS:
  /// The user selected a family.
  void chosen(const std::string& family);

 private:
  QStringList m_installed;
  QStringList m_offered;
};

}  // namespace zolt
