#pragma once

#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "controls/TextField.h"
#include "settings/EmulationSettingsStore.h"

namespace zolt {

/// Controls for settings of the full emulation that are stored under keys of their own, and named after them. Each
/// shows the current value, follows it, and stores what the user chooses at once. The store must outlive them.
Switch* makeSwitch(EmulationSettingsStore& store, bool EmulationSettings::*setting);
SliderRow* makeSlider(EmulationSettingsStore& store, double EmulationSettings::*setting, SliderRow::Text text);
TextField* makeField(EmulationSettingsStore& store, std::string EmulationSettings::*setting);

}  // namespace zolt
