#include "controls/ButtonAccessible.h"

#include <QHash>

#include "controls/Switch.h"

namespace zolt {

namespace {

QHash<QString, QAccessible::Role>& roles() {
  static QHash<QString, QAccessible::Role> roles;
  return roles;
}

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
  const auto role = roles().constFind(className);
  if (role == roles().constEnd()) return nullptr;
  if (auto* button = qobject_cast<QAbstractButton*>(object)) return new ButtonAccessible(*button, *role);
  return new QAccessibleWidget(static_cast<QWidget*>(object), *role);
}

}  // namespace

ButtonAccessible::ButtonAccessible(QAbstractButton& button, QAccessible::Role role)
    : QAccessibleWidget(&button, role), m_button(button) {}

void ButtonAccessible::setRole(const QMetaObject& type, QAccessible::Role role) {
  if (roles().isEmpty()) QAccessible::installFactory(makeInterface);
  roles().insert(QLatin1String(type.className()), role);
}

QAccessible::State ButtonAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  const bool isTab = role() == QAccessible::PageTab;
  state.checkable = !isTab;
  state.checked = !isTab && m_button.isChecked();
  state.selectable = isTab;
  state.selected = isTab && m_button.isChecked();
  const auto* fixable = qobject_cast<const Switch*>(&m_button);
  state.readOnly = fixable != nullptr && fixable->isFixed();
  return state;
}

QString ButtonAccessible::text(QAccessible::Text kind) const {
  const QString given = QAccessibleWidget::text(kind);
  return kind == QAccessible::Name && given.isEmpty() ? m_button.text() : given;
}

QStringList ButtonAccessible::actionNames() const {
  if (!m_button.isEnabled()) return {};
  return {role() == QAccessible::CheckBox ? toggleAction() : pressAction(), setFocusAction()};
}

void ButtonAccessible::doAction(const QString& action) {
  if (!m_button.isEnabled()) return;
  if (action == setFocusAction()) {
    m_button.setFocus(Qt::ShortcutFocusReason);
  } else if (action == pressAction() || action == toggleAction()) {
    m_button.click();
  }
}

}  // namespace zolt
