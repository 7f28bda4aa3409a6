#pragma once

#include <initializer_list>

#include "controls/Switch.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

/// A switch with a fixed value: it cannot be changed and is not stored.
struct FixedSwitch {
  const char* label;
  const char* objectName;
  bool isOn;
  bool isEnabled = true;
};

/// Adds a row for each switch.
inline void addFixedSwitches(GroupedForm& form, std::initializer_list<FixedSwitch> switches) {
  for (const FixedSwitch& each : switches) {
    auto* control = new Switch(Switch::Kind::Fixed);
    control->setObjectName(QLatin1String(each.objectName));
    control->setChecked(each.isOn);
    control->setEnabled(each.isEnabled);
    form.addRow(QLatin1String(each.label), control);
  }
}

}  // namespace zolt
