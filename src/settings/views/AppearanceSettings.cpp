#include "settings/views/AppearanceSettings.h"

#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <type_traits>

#include "controls/SecondaryLabel.h"
#include "controls/SegmentedPicker.h"
#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "settings/views/ValueTexts.h"

namespace zolt {

namespace {

// Steps per 1 of a continuous range: finer than a pixel on any screen.
constexpr int kContinuousParts = 10000;
constexpr int kContinuousKeyStep = 100;

SliderScale scaleOf(const Config::Range& range) {
  const bool isContinuous = range.step == 0;
  const int parts = isContinuous ? kContinuousParts : static_cast<int>(std::lround(1 / range.step));
  return {.partsOfOne = parts,
          .first = static_cast<int>(std::lround(range.first * parts)),
          .last = static_cast<int>(std::lround(range.last * parts)),
          .keyStep = isContinuous ? kContinuousKeyStep : 1};
}

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

}  // namespace

AppearanceSettings::AppearanceSettings(Config& config, QWidget* parent) : GroupedForm(parent), m_config(config) {
  setObjectName(QStringLiteral("appearance"));
  addSetting(m_config.theme);
  addSetting(m_config.fontFamily);
  addSetting(m_config.fontSize, pointsText);
  addSetting(m_config.lineSpacing, decimalText);
  addSetting(m_config.cursorStyle);
  addSetting(m_config.cursorBlink);
  addSetting(m_config.opacity, percentText);
  addSetting(m_config.blurBackground);

  // Changes are announced before they take effect, so refresh later, once for several changes.
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_refresh, &QTimer::timeout, this, &AppearanceSettings::refresh);
  connect(&m_config, &Config::objectWillChange, &m_refresh, qOverload<>(&QTimer::start));
}

template <class T, class... Text>
void AppearanceSettings::addSetting(Config::Published<T>& setting, Text... text) {
  if (const QString section = QLatin1String(setting.row().section); section != m_section) {
    addSection(section);
    m_section = section;
  }
  auto* control = makeControl(setting, text...);
  control->setObjectName(QLatin1String(setting.row().key));
  addRow(QLatin1String(setting.row().label), control);
  showValue(*control, setting.value());
  m_rows.push_back([&setting, control, seen = setting.value()]() mutable {
    showValue(*control, setting.value());
    const bool hasChanged = setting.value() != seen;
    seen = setting.value();
    return hasChanged && setting.row().saving == Config::Saving::OnChange;
  });
}

void AppearanceSettings::refresh() {
  bool isToSave = false;
  for (const auto& showAgain : m_rows) {
    isToSave |= showAgain();
  }
  if (isToSave) m_config.save();
}

}  // namespace zolt
