#include "settings/views/ButtonAccessible.h"

#include <algorithm>
#include <array>
#include <utility>

#include "settings/views/Switch.h"

namespace zolt {

namespace {

constexpr std::array<std::pair<const char*, QAccessible::Role>, 3> kButtons{
    {{"zolt::Switch", QAccessible::CheckBox},
     {"zolt::Segment", QAccessible::RadioButton},
     {"zolt::TabButton", QAccessible::PageTab}}};
constexpr std::array<std::pair<const char*, QAccessible::Role>, 2> kGroups{
    {{"zolt::SegmentedPicker", QAccessible::Grouping}, {"zolt::PreferencesTabBar", QAccessible::PageTabList}}};

QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
  const auto named = [&](const auto& each) { return className == QLatin1String(each.first); };
  if (const auto* found = std::ranges::find_if(kButtons, named); found != kButtons.end()) {
    return new ButtonAccessible(*static_cast<QAbstractButton*>(object), found->second);
  }
  if (const auto* found = std::ranges::find_if(kGroups, named); found != kGroups.end()) {
    return new QAccessibleWidget(static_cast<QWidget*>(object), found->second);
  }
  return nullptr;
}

}  // namespace

ButtonAccessible::ButtonAccessible(QAbstractButton& button, QAccessible::Role role)
    : QAccessibleWidget(&button, role), m_button(button) {}

void ButtonAccessible::install() {
  [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeInterface), true);
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
