#pragma once

#include <QTimer>
#include <functional>
#include <vector>

#include "settings/Config.h"
#include "settings/views/SettingsForm.h"

namespace zolt {

/// The appearance tab: theme, font, cursor and window settings of the store.
///
/// When a setting that saves on change has changed, from anywhere, the store is saved once per turn of the event loop.
/// The other values are deliberately saved only along with one of those; while the full emulation is on, each saves on
/// change that is stored at all.
class AppearanceSettings : public SettingsForm {
  Q_OBJECT

 public:
  /// Both must outlive the form.
  AppearanceSettings(Config& config, EmulationSettingsStore& emulation, QWidget* parent = nullptr);

 protected:
  void build() override;

 private:
  /// Adds a row with a setting's control, below its section's title.
  template <class T, class Control>
  void addSetting(Config::Published<T>& setting, Control* control);
  /// Saves when a setting has changed whose change is to be saved.
  void watch();
  void refresh();

  Config& m_config;
  QString m_section;  // of the last row
  QTimer m_refresh;
  std::vector<std::function<void()>> m_rows;     // each shows its setting's current value
  std::vector<std::function<bool()>> m_watched;  // each returns whether a change since the last call is to be saved
};

}  // namespace zolt
