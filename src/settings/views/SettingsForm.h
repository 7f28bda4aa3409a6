#pragma once

#include <initializer_list>

#include "settings/EmulationSettingsStore.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

/// A switch with a fixed value, which cannot be changed and is not stored; unless it is a setting of the full emulation
/// and that is on.
struct FixedSwitch {
  const char* label;
  const char* objectName;
  bool isOn;
  bool isEnabled = true;
  bool EmulationSettings::*setting = nullptr;
  const char* explanation = "";  ///< in the setting's tooltip
};

/// A form whose rows depend on whether the full emulation is on. When that changes, or the
/// font, all rows are built anew, and the form stays where it was scrolled to.
class SettingsForm : public GroupedForm {
  Q_OBJECT

 public:
  /// `emulation` must outlive the form.
  explicit SettingsForm(EmulationSettingsStore& emulation, QWidget* parent = nullptr);

 protected:
  EmulationSettingsStore& emulation() { return m_emulation; }
  /// Whether the rows are those of the full emulation.
  bool isForFullEmulation() const { return m_isForFullEmulation; }

  /// Adds all rows. A subclass calls it once in its constructor.
  virtual void build() = 0;
  /// Adds a row for a setting that only the full emulation reads, and says so in a tooltip, after `explanation`.
  void addEmulationRow(const QString& label, QWidget* control, const QString& explanation = QString());
  /// Adds a row for each switch.
  void addFixedSwitches(std::initializer_list<FixedSwitch> switches);

  void changeEvent(QEvent* event) override;

 private:
  void rebuild();

  EmulationSettingsStore& m_emulation;
  bool m_isForFullEmulation;
  bool m_isRebuilding = false;
};

}  // namespace zolt
