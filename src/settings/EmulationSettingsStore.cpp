#include "settings/EmulationSettingsStore.h"

#include <utility>

namespace zolt {

EmulationSettingsStore::EmulationSettingsStore(Config& config, UserDefaults& defaults, QObject* parent)
    : QObject(parent), m_config(config), m_defaults(defaults), m_seen(seen()) {
  // Some changes are announced before they take effect, so look later, once for several changes.
  m_looking.setSingleShot(true);
  m_looking.setInterval(0);
  connect(&m_looking, &QTimer::timeout, this, &EmulationSettingsStore::look);
  connect(&m_config, &Config::objectWillChange, &m_looking, qOverload<>(&QTimer::start));
  connect(&m_defaults, &UserDefaults::changed, &m_looking, qOverload<>(&QTimer::start));
}

void EmulationSettingsStore::look() {
  const Seen before = std::exchange(m_seen, seen());
  if (m_seen != before) Q_EMIT changed();
}

void EmulationSettingsStore::set(bool EmulationSettings::*setting, bool value) {
  m_defaults.setBool(rowOf(setting).key, value);
}

void EmulationSettingsStore::set(double EmulationSettings::*setting, double value) {
  m_defaults.setDouble(rowOf(setting).key, value);
}

void EmulationSettingsStore::set(std::string EmulationSettings::*setting, const std::string& value) {
  m_defaults.setString(rowOf(setting).key, value);
}

void EmulationSettingsStore::reset() {
  for (const EmulationRow& row : emulationRows()) {
    if (row.isReset) m_defaults.removeObject(row.key);
  }
}

}  // namespace zolt
