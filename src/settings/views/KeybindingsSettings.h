#pragma once

#include "settings/views/SettingsForm.h"

namespace zolt {

/// The keys tab: a read-only table of key combinations, and fixed switches.
class KeybindingsSettings : public SettingsForm {
  Q_OBJECT

 public:
  /// `emulation` must outlive the form.
  explicit KeybindingsSettings(EmulationSettingsStore& emulation, QWidget* parent = nullptr);

 protected:
  void build() override;
};

}  // namespace zolt
