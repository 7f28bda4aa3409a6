#include "settings/views/AdvancedSettings.h"

#include "controls/DestructiveButton.h"
#include "controls/NumberField.h"
#include "settings/views/FixedSwitches.h"

namespace zolt {

namespace {

constexpr int kNumberWidth = 100;

}  // namespace

AdvancedSettings::AdvancedSettings(Config& config, QWidget* parent) : GroupedForm(parent), m_config(config) {
  setObjectName(QStringLiteral("advanced"));
  addSection(QLatin1String(m_config.scrollbackLines.row().section));
  auto* lines = new NumberField;
  lines->setObjectName(QLatin1String(m_config.scrollbackLines.row().key));
  lines->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  lines->setFixedWidth(kNumberWidth + 2 * KeyboardFocus::margin);
  lines->setNumber(m_config.scrollbackLines);
  addRow(QLatin1String(m_config.scrollbackLines.row().label), lines);
  addFixedSwitches(*this, {{"Use alternate screen buffer", "useAlternateScreenBuffer", true},
                           {"Enable mouse reporting", "enableMouseReporting", true}});

  addSection(QStringLiteral("Performance"));
  addFixedSwitches(*this, {{"GPU Acceleration (Metal)", "gpuAcceleration", true, false},
                           {"Disable transparency for fullscreen", "disableTransparencyForFullscreen", true}});

  addSection(QStringLiteral("Debug"));
  addFixedSwitches(
      *this, {{"Show FPS counter", "showFpsCounter", false}, {"Log terminal output", "logTerminalOutput", false}});

  addSection(QString());
  auto* reset = new DestructiveButton(QStringLiteral("Reset to Defaults"));
  reset->setObjectName(QStringLiteral("resetToDefaults"));
  addLeadingRow(reset);

  // An edited number is deliberately not saved: it is written with the next save of another setting.
  connect(lines, &NumberField::chosen, this, [this](std::int64_t number) { m_config.scrollbackLines = number; });
  connect(reset, &QAbstractButton::clicked, this, &AdvancedSettings::resetDefaults);
  // Changes are announced before they take effect, so refresh later, once for several changes.
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_refresh, &QTimer::timeout, lines, [this, lines] { lines->setNumber(m_config.scrollbackLines); });
  connect(&m_config, &Config::objectWillChange, &m_refresh, qOverload<>(&QTimer::start));
}

void AdvancedSettings::resetDefaults() {
  // The line spacing and the general tab's settings deliberately stay as they are; and a reset turns cursor blinking
  // on, although an empty store reads as off.
  m_config.assignDefaults();
  m_config.save();
}

}  // namespace zolt
