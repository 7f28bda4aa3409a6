#pragma once

#include <QObject>
#include <QTimer>

#include "settings/EmulationSettings.h"

namespace zolt {

/// The settings of the full emulation, observable: those of the store of the appearance settings, and those that are
/// stored under keys of their own. Main thread.
class EmulationSettingsStore : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive the store.
  EmulationSettingsStore(Config& config, UserDefaults& defaults, QObject* parent = nullptr);

  /// Whether the full emulation is on.
  bool isOn() const { return m_defaults.boolForKey(kFullEmulationKey); }
  EmulationSettings current() const { return emulationSettings(m_config, m_defaults); }

  /// Store a setting that has a key of its own.
  void set(bool EmulationSettings::*setting, bool value);
  void set(double EmulationSettings::*setting, double value);
  void set(std::string EmulationSettings::*setting, const std::string& value);
  /// Removes the stored values of all settings that a reset includes.
  void reset();

 Q_SIGNALS:
  /// `isOn` or any of the settings differs from what it was; at most once per turn of the event loop.
  void changed();

 private:
  struct Seen {
    bool isOn;
    EmulationSettings settings;
    friend bool operator==(const Seen&, const Seen&) = default;
  };
  Seen seen() const { return {.isOn = isOn(), .settings = current()}; }
  void look();

  Config& m_config;
  UserDefaults& m_defaults;
  Seen m_seen;
  QTimer m_looking;
};

}  // namespace zolt
