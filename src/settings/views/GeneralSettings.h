#pragma once

#include "platform/StoredString.h"
#include "session/ShellManager.h"
#include "settings/views/SettingsForm.h"

namespace zolt {

/// The general tab: two settings that are stored as they are edited, and fixed switches.
class GeneralSettings : public SettingsForm {
  Q_OBJECT

 public:
  /// All must outlive the form.
  GeneralSettings(UserDefaults& defaults, ShellManager& shells, EmulationSettingsStore& emulation,
                  QWidget* parent = nullptr);

 protected:
  void build() override;

 private:
  ShellManager& m_shells;
  StoredString m_startupShell;
  StoredString m_startupCommand;
};

}  // namespace zolt
