#pragma once

#include <QTimer>

#include "settings/Config.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

class NumberField;

/// The advanced tab: scrollback length, fixed switches and the reset to defaults.
class AdvancedSettings : public GroupedForm {
  Q_OBJECT

 public:
  /// `config` must outlive the form.
  explicit AdvancedSettings(Config& config, QWidget* parent = nullptr);

 private:
  void resetDefaults();

  Config& m_config;
  QTimer m_refresh;
};

}  // namespace zolt
