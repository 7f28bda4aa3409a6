#pragma once

#include <QTimer>

#include "controls/PopUpPicker.h"
#include "platform/StoredString.h"
#include "session/ShellManager.h"

namespace zolt {

/// Chooses one shell of the catalogue, by its executable's path. A stored path that is not in the catalogue is left as
/// it is and shown as no choice.
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
