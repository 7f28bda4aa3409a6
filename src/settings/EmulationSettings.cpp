#include "settings/EmulationSettings.h"

#include <algorithm>
#include <array>

#include "platform/SettingsValue.h"

namespace zolt {

namespace {

using Settings = EmulationSettings;

constexpr Config::Range kFontSizes{.first = 4, .last = 288};
constexpr Config::Range kLineSpacings{.first = 0.8, .last = 3};
constexpr Config::Range kOpacities{.first = 0.1, .last = 1};

// The settings table: key, member, whether a reset includes it, a number's range.
// clang-format off
constexpr std::array<EmulationRow, 24> kRows{{
    {kStartupShell.key,           &Settings::startupShell,              false},
    {kStartupCommand.key,         &Settings::startupCommand,            false},
    {"lineSpacing",               &Settings::lineSpacing,               false, {1, 2, 0.1}},
    {"closeWindowWhenShellExits", &Settings::closeWindowWhenShellExits},
    {"warnBeforeClosing",         &Settings::warnBeforeClosing},
    {"restorePreviousSession",    &Settings::restorePreviousSession},
    {"optionSendsMeta",           &Settings::optionSendsMeta},
    {"commandActsAsMeta",         &Settings::commandActsAsMeta},
    {"useAlternateScreenBuffer",  &Settings::useAlternateScreenBuffer},
    {"enableMouseReporting",      &Settings::enableMouseReporting},
    {"ligatures",                 &Settings::ligatures},
    {"minimumContrast",           &Settings::minimumContrast,           true, {1, 7, 0.5}},
    {"wordSeparators",            &Settings::wordSeparators},
    {"askBeforeRiskyPaste",       &Settings::askBeforeRiskyPaste},
    {"shellIntegration",          &Settings::shellIntegration},
    {"alwaysShowTabs",            &Settings::alwaysShowTabs},
    {"dimUnfocusedPanes",         &Settings::dimUnfocusedPanes},
    {"reopenSeconds",             &Settings::reopenSeconds,             true, {10, 600, 1}},
    {"allowWindowRequests",       &Settings::allowWindowRequests},
    {"messagesMayType",           &Settings::messagesMayType},
    {"boldIsBright",              &Settings::boldIsBright},
    {"audibleBell",               &Settings::audibleBell},
    {"visualBell",                &Settings::visualBell},
    {"desktopNotifications",      &Settings::desktopNotifications},
}};
// clang-format on

double clamped(double value, const Config::Range& range) {
  return std::clamp(value, range.first, range.last);
}

// One per type: reads a stored value over the default.
void read(const UserDefaults& defaults, const EmulationRow& row, bool& value) {
  value = flagOfText(defaults.stringForKey(row.key).value_or("")).value_or(value);
}

void read(const UserDefaults& defaults, const EmulationRow& row, double& value) {
  // No number reads as 0.
  if (const double stored = defaults.doubleForKey(row.key); stored != 0) value = clamped(stored, row.range);
}

void read(const UserDefaults& defaults, const EmulationRow& row, std::string& value) {
  value = defaults.stringForKey(row.key).value_or(value);
}

}  // namespace

std::span<const EmulationRow> emulationRows() {
  return kRows;
}

const EmulationRow& rowOf(EmulationRow::Member member) {
  return *std::ranges::find(kRows, member, &EmulationRow::member);
}

EmulationSettings emulationSettings(const Config& config, const UserDefaults& defaults) {
  EmulationSettings settings;
  settings.fontFamily = config.fontFamily.value();
  settings.fontSize = clamped(config.fontSize, kFontSizes);
  settings.lineSpacing = clamped(config.lineSpacing, kLineSpacings);
  settings.colorScheme = config.theme;
  settings.cursorStyle = config.cursorStyle;
  settings.cursorBlink = config.cursorBlink;
  settings.opacity = clamped(config.opacity, kOpacities);
  settings.blurBackground = config.blurBackground;
  settings.scrollbackLines = config.scrollbackLines > 0 ? std::optional(config.scrollbackLines.value()) : std::nullopt;
  for (const EmulationRow& row : kRows) {
    std::visit([&](auto member) { read(defaults, row, settings.*member); }, row.member);
  }
  return settings;
}

}  // namespace zolt
