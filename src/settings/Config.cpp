#include "settings/Config.h"

#include <algorithm>

namespace zolt {

namespace {

template <class Cases>
auto caseOf(const Cases& cases, std::string_view text) {
  const auto found = std::ranges::find(cases, text, [](const auto& each) { return each.second; });
  return found == cases.end() ? std::nullopt : std::optional(found->first);
}

}  // namespace

std::string_view rawValue(Config::ColorScheme scheme) {
  return std::ranges::find(Config::colorSchemes, scheme, [](const auto& each) { return each.first; })->second;
}

std::string_view rawValue(Config::CursorStyle style) {
  return std::ranges::find(Config::cursorStyles, style, [](const auto& each) { return each.first; })->second;
}

std::optional<Config::ColorScheme> colorSchemeOf(std::string_view rawValue) {
  return caseOf(Config::colorSchemes, rawValue);
}

std::optional<Config::CursorStyle> cursorStyleOf(std::string_view rawValue) {
  return caseOf(Config::cursorStyles, rawValue);
}

Config::Config(UserDefaults& defaults) : m_defaults(defaults) {}

Config& Config::shared() {
  // Lives as long as the process.
  static auto* config = new Config(UserDefaults::standard());
  return *config;
}

void Config::setupDefaults() {
  if (const auto stored = colorSchemeOf(m_defaults.stringForKey("theme").value_or(""))) theme = *stored;
  fontSize = m_defaults.doubleForKey("fontSize");
  if (fontSize == 0.0) fontSize = 14.0;
  fontFamily = m_defaults.stringForKey("fontFamily").value_or("SF Mono");
  if (const auto stored = cursorStyleOf(m_defaults.stringForKey("cursorStyle").value_or(""))) cursorStyle = *stored;
  cursorBlink = m_defaults.boolForKey("cursorBlink");
  scrollbackLines = m_defaults.integerForKey("scrollbackLines");
  if (scrollbackLines == 0) scrollbackLines = 10000;
  opacity = m_defaults.doubleForKey("opacity");
  if (opacity == 0.0) opacity = 1.0;
  blurBackground = m_defaults.boolForKey("blurBackground");
}

void Config::save() {
  m_defaults.setString("theme", std::string(rawValue(theme)));
  m_defaults.setDouble("fontSize", fontSize);
  m_defaults.setString("fontFamily", fontFamily);
  m_defaults.setString("cursorStyle", std::string(rawValue(cursorStyle)));
  m_defaults.setBool("cursorBlink", cursorBlink);
  m_defaults.setInteger("scrollbackLines", scrollbackLines);
  m_defaults.setDouble("opacity", opacity);
  m_defaults.setBool("blurBackground", blurBackground);
}

}  // namespace zolt
