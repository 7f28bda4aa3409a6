#include "settings/views/SettingsForm.h"

#include <QEvent>
#include <QLabel>
#include <utility>

#include "controls/Switch.h"
#include "platform/MainQueue.h"
#include "settings/views/EmulationControls.h"

namespace zolt {

SettingsForm::SettingsForm(EmulationSettingsStore& emulation, QWidget* parent)
    : GroupedForm(parent), m_emulation(emulation), m_isForFullEmulation(emulation.isOn()) {
  connect(&m_emulation, &EmulationSettingsStore::changed, this, [this] {
    if (m_emulation.isOn() != m_isForFullEmulation) rebuild();
  });
}

void SettingsForm::rebuild() {
  m_isForFullEmulation = m_emulation.isOn();
  QString focused;
  if (QWidget* control = window()->focusWidget(); control != nullptr && isAncestorOf(control)) {
    focused = control->objectName();
    // A number that is being typed is committed, as it is whenever its field is left.
    control->clearFocus();
  }
  clear();
  build();
  // Qt would show them later, and until then lay out a form without rows, which cannot stay where it is scrolled to.
  for (auto* section : widget()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    section->show();
  }
  if (focused.isEmpty()) return;
  if (auto* control = findChild<QWidget*>(focused)) control->setFocus(Qt::OtherFocusReason);
}

void SettingsForm::changeEvent(QEvent* event) {
  GroupedForm::changeEvent(event);
  if (event->type() != QEvent::FontChange || std::exchange(m_isRebuilding, true)) return;
  // Not while Qt goes through the children to tell them, too.
  MainQueue::async(MainQueue::Owner(this), [this] {
    m_isRebuilding = false;
    rebuild();
  });
}

void SettingsForm::addEmulationRow(const QString& label, QWidget* control, const QString& explanation) {
  const QString used = QStringLiteral("Takes effect in the full emulation only");
  const QString toolTip = explanation.isEmpty() ? used : explanation + QStringLiteral(". ") + used;
  control->setToolTip(toolTip);
  addRow(label, control)->setToolTip(toolTip);
}

void SettingsForm::addFixedSwitches(std::initializer_list<FixedSwitch> switches) {
  for (const FixedSwitch& each : switches) {
    const QString label = QLatin1String(each.label);
    if (isForFullEmulation() && each.setting != nullptr) {
      addEmulationRow(label, makeSwitch(m_emulation, each.setting), QLatin1String(each.explanation));
      continue;
    }
    auto* control = new Switch(Switch::Kind::Fixed);
    control->setObjectName(QLatin1String(each.objectName));
    control->setChecked(each.isOn);
    control->setEnabled(each.isEnabled);
    addRow(label, control);
  }
}

}  // namespace zolt
