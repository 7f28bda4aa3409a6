#pragma once

#include <QTimer>
#include <functional>
#include <vector>

#include "settings/Config.h"
#include "settings/views/GroupedForm.h"

namespace zolt {

/// The appearance tab: theme, font, cursor and window settings of the store.
///
/// A change of a setting that saves on change, wherever it was made, saves the store, once for all changes of one turn
/// of the event loop. The other values are deliberately saved only along with one of those.
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
  // One a row: shows the current value, and returns whether it changed since the last call in a way that saves.
  std::vector<std::function<bool()>> m_rows;
};

}  // namespace zolt
