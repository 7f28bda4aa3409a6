#include "settings/views/AppearanceSettings.h"

#include <QSignalBlocker>
#include <algorithm>
#include <type_traits>
#include <utility>

#include "controls/SecondaryLabel.h"
#include "controls/SegmentedPicker.h"
#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "settings/views/EmulationControls.h"
#include "settings/views/FontFamilyPicker.h"
#include "settings/views/RangeScale.h"
#include "settings/views/ValueTexts.h"

namespace zolt {

namespace {

// Each of these creates the control that edits, or only shows, a setting of one type; `showValue` displays a value.

template <class Case>
requires std::is_enum_v<Case> SegmentedPicker* makeControl(Config::Published<Case>& setting) {
  QStringList labels;
  for (const auto& [value, label] : Config::casesOf(Case())) {
    labels.append(QString::fromUtf8(label.data(), static_cast<qsizetype>(label.size())));
  }
  auto* picker = new SegmentedPicker(labels);
  QObject::connect(picker, &SegmentedPicker::picked, picker,
                   [&setting](int index) { setting = Config::casesOf(Case())[static_cast<std::size_t>(index)].first; });
  return picker;
}

template <class Case>
void showValue(SegmentedPicker& picker, Case value) {
  const auto& cases = Config::casesOf(value);
  const auto found = std::ranges::find(cases, value, [](const auto& each) { return each.first; });
  picker.setCurrentIndex(static_cast<int>(found - cases.begin()));
}

SliderRow* makeControl(Config::Published<double>& setting, SliderRow::Text text) {
  auto* row = new SliderRow(scaleOf(setting.row().range), text);
  QObject::connect(row, &SliderRow::chosen, row, [&setting](double chosen) { setting = chosen; });
  return row;
}

void showValue(SliderRow& row, double value) {
  row.setValue(value);
}

Switch* makeControl(Config::Published<bool>& setting) {
  auto* control = new Switch;
  QObject::connect(control, &Switch::toggled, control, [&setting](bool isOn) { setting = isOn; });
  return control;
}

void showValue(Switch& control, bool isOn) {
  const QSignalBlocker silent(control);
  control.setChecked(isOn);
}

SecondaryLabel* makeControl(Config::Published<std::string>&) {
  auto* label = new SecondaryLabel(QString());
  label->setContentsMargins(0, 0, KeyboardFocus::margin, 0);
  return label;
}

void showValue(SecondaryLabel& label, const std::string& value) {
  label.setText(QString::fromStdString(value));
}

FontFamilyPicker* makeFamilyPicker(Config::Published<std::string>& setting) {
  auto* picker = new FontFamilyPicker;
  QObject::connect(picker, &FontFamilyPicker::chosen, picker,
                   [&setting](const std::string& family) { setting = family; });
  return picker;
}

void showValue(FontFamilyPicker& picker, const std::string& value) {
  picker.setFamily(value);
}

}  // namespace

AppearanceSettings::AppearanceSettings(Config& config, EmulationSettingsStore& emulation, QWidget* parent)
    : SettingsForm(emulation, parent), m_config(config) {
  setObjectName(QStringLiteral("appearance"));
  AppearanceSettings::build();
  watch();
}

void AppearanceSettings::build() {
  m_rows.clear();
  m_section.clear();
  addSetting(m_config.theme, makeControl(m_config.theme));
  if (isForFullEmulation()) {
    addSetting(m_config.fontFamily, makeFamilyPicker(m_config.fontFamily));
  } else {
    addSetting(m_config.fontFamily, makeControl(m_config.fontFamily));
  }
  addSetting(m_config.fontSize, makeControl(m_config.fontSize, pointsText));
  if (isForFullEmulation()) {
    addEmulationRow(QLatin1String(m_config.lineSpacing.row().label),
                    makeSlider(emulation(), &EmulationSettings::lineSpacing, decimalText));
  } else {
    addSetting(m_config.lineSpacing, makeControl(m_config.lineSpacing, decimalText));
  }
  addSetting(m_config.cursorStyle, makeControl(m_config.cursorStyle));
  addSetting(m_config.cursorBlink, makeControl(m_config.cursorBlink));
  addSetting(m_config.opacity, makeControl(m_config.opacity, percentText));
  addSetting(m_config.blurBackground, makeControl(m_config.blurBackground));
}

void AppearanceSettings::watch() {
  for (const Config::Setting& each : m_config.settings()) {
    const auto watchOne = [this](const auto* setting) {
      if (setting->row().saving == Config::Saving::Never) return;
      m_watched.push_back([this, setting, seen = setting->value()]() mutable {
        const bool hasChanged = std::exchange(seen, setting->value()) != setting->value();
        return hasChanged && (setting->row().saving == Config::Saving::OnChange || emulation().isOn());
      });
    };
    std::visit(watchOne, each);
  }
  // Changes are announced before they take effect, so refresh later, once for several changes.
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_refresh, &QTimer::timeout, this, &AppearanceSettings::refresh);
  connect(&m_config, &Config::objectWillChange, &m_refresh, qOverload<>(&QTimer::start));
}

template <class T, class Control>
void AppearanceSettings::addSetting(Config::Published<T>& setting, Control* control) {
  if (const QString section = QLatin1String(setting.row().section); section != m_section) {
    addSection(section);
    m_section = section;
  }
  control->setObjectName(QLatin1String(setting.row().key));
  addEmulationRow(QLatin1String(setting.row().label), control);
  const auto show = [&setting, control] { showValue(*control, setting.value()); };
  show();
  m_rows.push_back(show);
}

void AppearanceSettings::refresh() {
  for (const auto& show : m_rows) {
    show();
  }
  bool isToSave = false;
  for (const auto& isDue : m_watched) {
    isToSave |= isDue();
  }
  if (isToSave) m_config.save();
}

}  // namespace zolt
