#pragma once

#include "settings/views/GroupedForm.h"

namespace zolt {

/// The keys tab: a read-only table of key combinations, and fixed switches.
class KeybindingsSettings : public GroupedForm {
  Q_OBJECT

 public:
  explicit KeybindingsSettings(QWidget* parent = nullptr);
};

}  // namespace zolt
