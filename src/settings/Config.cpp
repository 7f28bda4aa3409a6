#include "settings/Config.h"

#include <algorithm>
#include <type_traits>

namespace zolt {

namespace {

template <class Case>
std::string_view nameOf(Case value) {
  return std::ranges::find(Config::casesOf(value), value, [](const auto& each) { return each.first; })->second;
}

template <class Case>
std::optional<Case> caseNamed(std::string_view name) {
  const auto& cases = Config::casesOf(Case());
  const auto found = std::ranges::find(cases, name, [](const auto& each) { return each.second; });
  return found == cases.end() ? std::nullopt : std::optional(found->first);
}

// One per type: loads a stored value. An unknown case changes nothing.
template <class Case>
requires std::is_enum_v<Case>
void load(const UserDefaults& defaults, Config::Published<Case>& setting) {
  const std::string name = defaults.stringForKey(setting.row().key).value_or("");
  if (const auto stored = caseNamed<Case>(name)) setting = *stored;
}

template <class Number>
void assignNumber(Config::Published<Number>& setting, Number stored) {
  setting = stored;
  if (setting.value() == 0) setting = setting.row().initial;
}

void load(const UserDefaults& defaults, Config::Published<double>& setting) {
  assignNumber(setting, defaults.doubleForKey(setting.row().key));
}

void load(const UserDefaults& defaults, Config::Published<std::int64_t>& setting) {
  assignNumber(setting, defaults.integerForKey(setting.row().key));
}

void load(const UserDefaults& defaults, Config::Published<bool>& setting) {
  setting = defaults.boolForKey(setting.row().key);
}

void load(const UserDefaults& defaults, Config::Published<std::string>& setting) {
  setting = defaults.stringForKey(setting.row().key).value_or(setting.row().initial);
}

// One per type: stores a value.
template <class Case>
requires std::is_enum_v<Case>
void store(UserDefaults& defaults, const char* key, Case value) {
  defaults.setString(key, std::string(nameOf(value)));
}

void store(UserDefaults& defaults, const char* key, double value) {
  defaults.setDouble(key, value);
}

void store(UserDefaults& defaults, const char* key, std::int64_t value) {
  defaults.setInteger(key, value);
}

void store(UserDefaults& defaults, const char* key, bool value) {
  defaults.setBool(key, value);
}

void store(UserDefaults& defaults, const char* key, const std::string& value) {
  defaults.setString(key, value);
}

template <class T>
bool isStored(const Config::Published<T>& setting) {
  return setting.row().saving != Config::Saving::Never;
}

}  // namespace

std::string_view rawValue(Config::ColorScheme scheme) {
  return nameOf(scheme);
}

std::string_view rawValue(Config::CursorStyle style) {
  return nameOf(style);
}

std::optional<Config::ColorScheme> colorSchemeOf(std::string_view rawValue) {
  return caseNamed<Config::ColorScheme>(rawValue);
}

std::optional<Config::CursorStyle> cursorStyleOf(std::string_view rawValue) {
  return caseNamed<Config::CursorStyle>(rawValue);
}

Config::Config(UserDefaults& defaults) : m_defaults(defaults) {}

Config& Config::shared() {
  // Never destroyed.
  static auto* config = new Config(UserDefaults::standard());
  return *config;
}

void Config::setupDefaults() {
  const auto loadOne = [this](auto* setting) {
    if (isStored(*setting)) load(m_defaults, *setting);
  };
  for (const Setting& each : m_settings) {
    std::visit(loadOne, each);
  }
}

void Config::save() {
  const auto saveOne = [this](const auto* setting) {
    if (isStored(*setting)) store(m_defaults, setting->row().key, setting->value());
  };
  for (const Setting& each : m_settings) {
    std::visit(saveOne, each);
  }
}

void Config::assignDefaults() {
  const auto positionOf = [](const Setting& each) {
    return std::visit([](const auto* setting) { return setting->row().resetPosition; }, each);
  };
  std::vector<Setting> inOrder = m_settings;
  std::erase_if(inOrder, [&](const Setting& each) { return positionOf(each) == 0; });
  std::ranges::stable_sort(inOrder, {}, positionOf);
  for (const Setting& each : inOrder) {
    std::visit([](auto* setting) { *setting = setting->row().initial; }, each);
  }
}

}  // namespace zolt
