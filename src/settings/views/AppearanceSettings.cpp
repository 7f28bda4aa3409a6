#include "settings/views/AppearanceSettings.h"

#include <QSignalBlocker>

#include "controls/SecondaryLabel.h"
#include "controls/SegmentedPicker.h"
#include "controls/SliderRow.h"
#include "controls/Switch.h"
#include "settings/views/ValueTexts.h"

namespace zolt {

namespace {

constexpr SliderScale kFontSizes{.partsOfOne = 1, .first = 8, .last = 72, .keyStep = 1};
constexpr SliderScale kLineSpacings{.partsOfOne = 10, .first = 10, .last = 20, .keyStep = 1};
// As good as continuous: finer than any screen.
constexpr SliderScale kOpacities{.partsOfOne = 10000, .first = 3000, .last = 10000, .keyStep = 100};

template <class Cases>
SegmentedPicker* makePicker(const Cases& cases, Config::Published<typename Cases::value_type::first_type>& value) {
  QStringList labels;
  for (const auto& each : cases) {
    labels.append(QString::fromUtf8(each.second.data(), static_cast<qsizetype>(each.second.size())));
  }
  auto* picker = new SegmentedPicker(labels);
  QObject::connect(picker, &SegmentedPicker::picked, picker,
                   [&cases, &value](int index) { value = cases[static_cast<std::size_t>(index)].first; });
  return picker;
}

SliderRow* makeSlider(const SliderScale& scale, SliderRow::Text text, Config::Published<double>& value) {
  auto* row = new SliderRow(scale, text);
  QObject::connect(row, &SliderRow::chosen, row, [&value](double chosen) { value = chosen; });
  return row;
}

Switch* makeSwitch(Config::Published<bool>& value) {
  auto* control = new Switch;
  QObject::connect(control, &Switch::toggled, control, [&value](bool isOn) { value = isOn; });
  return control;
}

template <class Cases, class Case>
int indexOf(const Cases& cases, Case value) {
  int index = 0;
  while (cases[static_cast<std::size_t>(index)].first != value) {
    ++index;
  }
  return index;
}

void showOn(Switch& control, bool isOn) {
  const QSignalBlocker silent(control);
  control.setChecked(isOn);
}

}  // namespace

AppearanceSettings::AppearanceSettings(Config& config, QWidget* parent)
    : GroupedForm(parent), m_config(config), m_seen(watched()) {
  setObjectName(QStringLiteral("appearance"));
  buildRows();
  showValues();
  // The notice of a change comes before the change; several make one refresh.
  m_refresh.setSingleShot(true);
  m_refresh.setInterval(0);
  connect(&m_refresh, &QTimer::timeout, this, &AppearanceSettings::refresh);
  connect(&m_config, &Config::objectWillChange, &m_refresh, qOverload<>(&QTimer::start));
}

void AppearanceSettings::buildRows() {
  const auto row = [this](const char* label, const char* name, auto* control) {
    control->setObjectName(QLatin1String(name));
    addRow(QLatin1String(label), control);
    return control;
  };
  addSection(QStringLiteral("Theme"));
  m_theme = row("Color Scheme", "theme", makePicker(Config::colorSchemes, m_config.theme));

  addSection(QStringLiteral("Font"));
  m_fontFamily = row("Font Family", "fontFamily", new SecondaryLabel(QString()));
  m_fontFamily->setContentsMargins(0, 0, KeyboardFocus::margin, 0);
  m_fontSize = row("Size", "fontSize", makeSlider(kFontSizes, pointsText, m_config.fontSize));
  m_lineSpacing = row("Line Spacing", "lineSpacing", makeSlider(kLineSpacings, decimalText, m_config.lineSpacing));

  addSection(QStringLiteral("Cursor"));
  m_cursorStyle = row("Style", "cursorStyle", makePicker(Config::cursorStyles, m_config.cursorStyle));
  m_cursorBlink = row("Blink cursor", "cursorBlink", makeSwitch(m_config.cursorBlink));

  addSection(QStringLiteral("Window"));
  m_opacity = row("Opacity", "opacity", makeSlider(kOpacities, percentText, m_config.opacity));
  m_blurBackground = row("Blur background", "blurBackground", makeSwitch(m_config.blurBackground));
}

AppearanceSettings::Watched AppearanceSettings::watched() const {
  return {m_config.theme, m_config.fontSize, m_config.cursorBlink, m_config.opacity};
}

void AppearanceSettings::showValues() {
  m_theme->setCurrentIndex(indexOf(Config::colorSchemes, m_config.theme.value()));
  m_fontFamily->setText(QString::fromStdString(m_config.fontFamily));
  m_fontSize->setValue(m_config.fontSize);
  m_lineSpacing->setValue(m_config.lineSpacing);
  m_cursorStyle->setCurrentIndex(indexOf(Config::cursorStyles, m_config.cursorStyle.value()));
  showOn(*m_cursorBlink, m_config.cursorBlink);
  m_opacity->setValue(m_config.opacity);
  showOn(*m_blurBackground, m_config.blurBackground);
}

void AppearanceSettings::refresh() {
  showValues();
  const Watched now = watched();
  if (now == m_seen) return;
  m_seen = now;
  m_config.save();
}

}  // namespace zolt
