#include "settings/views/EmulationControls.h"

#include <QSignalBlocker>

#include "settings/views/RangeScale.h"

namespace zolt {

namespace {

void showValue(Switch& control, bool isOn) {
  const QSignalBlocker silent(control);
  control.setChecked(isOn);
}

void showValue(SliderRow& row, double value) {
  row.setValue(value);
}

void showValue(TextField& field, const std::string& value) {
  const QString text = QString::fromStdString(value);
  // Setting an equal text would move the cursor.
  if (text == field.text()) return;
  const QSignalBlocker silent(field);
  field.setText(text);
}

// Names a control after its setting, and lets it show the current value from now on.
template <class Control, class T>
Control* following(EmulationSettingsStore& store, T EmulationSettings::*setting, Control* control) {
  control->setObjectName(QLatin1String(rowOf(setting).key));
  const auto show = [&store, setting, control] { showValue(*control, store.current().*setting); };
  show();
  QObject::connect(&store, &EmulationSettingsStore::changed, control, show);
  return control;
}

}  // namespace

Switch* makeSwitch(EmulationSettingsStore& store, bool EmulationSettings::*setting) {
  auto* control = following(store, setting, new Switch);
  QObject::connect(control, &Switch::toggled, control, [&store, setting](bool isOn) { store.set(setting, isOn); });
  return control;
}

SliderRow* makeSlider(EmulationSettingsStore& store, double EmulationSettings::*setting, SliderRow::Text text) {
  auto* row = following(store, setting, new SliderRow(scaleOf(rowOf(setting).range), text));
  QObject::connect(row, &SliderRow::chosen, row, [&store, setting](double value) { store.set(setting, value); });
  return row;
}

TextField* makeField(EmulationSettingsStore& store, std::string EmulationSettings::*setting) {
  auto* field = following(store, setting, new TextField);
  QObject::connect(field, &QLineEdit::textChanged, field,
                   [&store, setting](const QString& text) { store.set(setting, text.toStdString()); });
  return field;
}

}  // namespace zolt
