#pragma once

#include <QTimer>
#include <functional>
#include <vector>

#include "settings/Config.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

/// The appearance tab: theme, font, cursor and window settings of the store.
///
/// When a setting that saves on change has changed, from anywhere, the store is saved once per turn of the event loop.
/// The other values are deliberately saved only along with one of those.
class AppearanceSettings : public GroupedForm {
  Q_OBJECT

 public:
  /// `config` must outlive the form.
  explicit AppearanceSettings(Config& config, QWidget* parent = nullptr);

 private:
  /// Adds a row, below its section's title, with the control that fits the setting's type; a slider also needs the text
  /// of its value.
  template <class T, class... Text>
  void addSetting(Config::Published<T>& setting, Text... text);
  void refresh();

  Config& m_config;
  QString m_section;  // of the last row
  QTimer m_refresh;
  // One per row: shows the current value, and returns whether it has changed since the last call and saves on change.
  std::vector<std::function<bool()>> m_rows;
};

}  // namespace zolt
