#pragma once

#include <QTimer>

#include "settings/Config.h"
#include "settings/views/SettingsForm.h"

namespace zolt {

/// The advanced tab: scrollback length, fixed switches, the reset to defaults; and more settings of the full emulation
/// while it is on.
class AdvancedSettings : public SettingsForm {
  Q_OBJECT

 public:
  /// Both must outlive the form.
  AdvancedSettings(Config& config, EmulationSettingsStore& emulation, QWidget* parent = nullptr);

 protected:
  void build() override;

 private:
  void addScrollbackLines();
  void addEmulationSettings();
  void resetDefaults();

  Config& m_config;
  QTimer m_refresh;
};

}  // namespace zolt
