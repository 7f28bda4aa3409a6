#pragma once

#include "platform/StoredString.h"
#include "session/ShellManager.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

/// The general tab: two settings that are stored as they are edited, and fixed switches.
class GeneralSettings : public GroupedForm {
  Q_OBJECT

 public:
  /// Both must outlive the form.
  GeneralSettings(UserDefaults& defaults, ShellManager& shells, QWidget* parent = nullptr);

 private:
  StoredString m_startupShell;
  StoredString m_startupCommand;
};

}  // namespace zolt
