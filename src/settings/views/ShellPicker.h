#pragma once

#include <QTimer>

#include "controls/PopUpPicker.h"
#include "platform/StoredString.h"
#include "session/ShellManager.h"

namespace zolt {

/// Selects a shell from the catalogue by the path of its executable. A stored path that is not in the catalogue is kept
/// and shown as blank.
class ShellPicker : public PopUpPicker {
  Q_OBJECT

 public:
  /// Both must outlive the picker.
  ShellPicker(StoredString& choice, ShellManager& shells, QWidget* parent = nullptr);

 private:
  void refresh();

  StoredString& m_choice;
  ShellManager& m_shells;
  QTimer m_refresh;
};

}  // namespace zolt
