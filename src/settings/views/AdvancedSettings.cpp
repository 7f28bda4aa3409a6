#include "settings/views/AdvancedSettings.h"

#include <array>

#include "controls/DestructiveButton.h"
#include "controls/NumberField.h"
#include "controls/TextScale.h"
#include "settings/views/EmulationControls.h"
#include "settings/views/ValueTexts.h"

namespace zolt {

namespace {

constexpr int kNumberWidth = 100;

struct FlagRow {
  const char* label;
  bool EmulationSettings::*setting;
};
constexpr std::array kFlags{FlagRow{"Use ligatures", &EmulationSettings::ligatures},
                            FlagRow{"Show bold text in bright colors", &EmulationSettings::boldIsBright},
                            FlagRow{"Ask before risky paste", &EmulationSettings::askBeforeRiskyPaste},
                            FlagRow{"Let programs move and resize the window", &EmulationSettings::allowWindowRequests},
                            FlagRow{"Let scripts type into any terminal", &EmulationSettings::messagesMayType},
                            FlagRow{"Shell integration", &EmulationSettings::shellIntegration},
                            FlagRow{"Always show tab bar", &EmulationSettings::alwaysShowTabs},
                            FlagRow{"Dim inactive splits", &EmulationSettings::dimUnfocusedPanes},
                            FlagRow{"Audible bell", &EmulationSettings::audibleBell},
                            FlagRow{"Visual bell", &EmulationSettings::visualBell},
                            FlagRow{"Show notifications", &EmulationSettings::desktopNotifications}};

}  // namespace

AdvancedSettings::AdvancedSettings(Config& config, EmulationSettingsStore& emulation, QWidget* parent)
    : SettingsForm(emulation, parent), m_config(config) {
  setObjectName(QStringLiteral("advanced"));
  // Changes are announced before they take effect, so refresh later, once for several changes.
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_config, &Config::objectWillChange, &m_refresh, qOverload<>(&QTimer::start));
  AdvancedSettings::build();
}

void AdvancedSettings::build() {
  addSection(QLatin1String(m_config.scrollbackLines.row().section));
  addScrollbackLines();
  addFixedSwitches({{.label = "Use alternate screen buffer",
                     .objectName = "useAlternateScreenBuffer",
                     .isOn = true,
                     .setting = &EmulationSettings::useAlternateScreenBuffer},
                    {.label = "Enable mouse reporting",
                     .objectName = "enableMouseReporting",
                     .isOn = true,
                     .setting = &EmulationSettings::enableMouseReporting}});

  addSection(QStringLiteral("Performance"));
  addFixedSwitches(
      {{.label = "GPU Acceleration (Metal)", .objectName = "gpuAcceleration", .isOn = true, .isEnabled = false},
       {.label = "Disable transparency for fullscreen",
        .objectName = "disableTransparencyForFullscreen",
        .isOn = true}});

  addSection(QStringLiteral("Debug"));
  addFixedSwitches({{.label = "Show FPS counter", .objectName = "showFpsCounter", .isOn = false},
                    {.label = "Log terminal output", .objectName = "logTerminalOutput", .isOn = false}});

  if (isForFullEmulation()) addEmulationSettings();

  addSection(QString());
  auto* reset = new DestructiveButton(QStringLiteral("Reset to Defaults"));
  reset->setObjectName(QStringLiteral("resetToDefaults"));
  addLeadingRow(reset);
  connect(reset, &QAbstractButton::clicked, this, &AdvancedSettings::resetDefaults);
}

void AdvancedSettings::addScrollbackLines() {
  auto* lines = new NumberField;
  lines->setObjectName(QLatin1String(m_config.scrollbackLines.row().key));
  lines->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lines->setFixedWidth(scaledToText(kNumberWidth, font()) + 2 * KeyboardFocus::margin);
  if (isForFullEmulation()) lines->allowNoLimit(QStringLiteral("No limit"));
  lines->setNumber(m_config.scrollbackLines);
  addEmulationRow(QLatin1String(m_config.scrollbackLines.row().label), lines);
  // Without the full emulation an edited number is deliberately not saved: it is written with the next save of another
  // setting.
  connect(lines, &NumberField::chosen, this, [this](std::int64_t number) { m_config.scrollbackLines = number; });
  connect(&m_refresh, &QTimer::timeout, lines, [this, lines] { lines->setNumber(m_config.scrollbackLines); });
}

void AdvancedSettings::addEmulationSettings() {
  addSection(QStringLiteral("Full Emulation"));
  addEmulationRow(QStringLiteral("Minimum Contrast"),
                  makeSlider(emulation(), &EmulationSettings::minimumContrast, contrastText),
                  QStringLiteral("Text that is too close to its background is made lighter or darker"));
  addEmulationRow(QStringLiteral("Word Separators"), makeField(emulation(), &EmulationSettings::wordSeparators),
                  QStringLiteral("Characters that end a word when it is selected by a double click, besides blanks"));
  addEmulationRow(
      QStringLiteral("Keep Closed Terminals"), makeSlider(emulation(), &EmulationSettings::reopenSeconds, secondsText),
      QStringLiteral("How long a closed split, tab or window can be reopened with its programs still running"));
  for (const FlagRow& row : kFlags) {
    addEmulationRow(QLatin1String(row.label), makeSwitch(emulation(), row.setting));
  }
}

void AdvancedSettings::resetDefaults() {
  // The line spacing, the shell and its command deliberately stay as they are; and a reset turns cursor blinking
  // on, although an empty store reads as off.
  m_config.assignDefaults();
  m_config.save();
  if (isForFullEmulation()) emulation().reset();
}

}  // namespace zolt
