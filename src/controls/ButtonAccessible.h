#pragma once

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace zolt {

/// What a screen reader sees of our own buttons: a switch is a check box, a segment a radio button, a tab a page tab.
/// All it can do to one is click it, so it cannot change what a click cannot change.
class ButtonAccessible : public QAccessibleWidget {
 public:
  ButtonAccessible(QAbstractButton& button, QAccessible::Role role);

  /// Gives every button, or every other widget, of exactly this class a role; before the first is shown.
  static void setRole(const QMetaObject& type, QAccessible::Role role);

  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  QStringList actionNames() const override;
  void doAction(const QString& action) override;

 private:
  QAbstractButton& m_button;
};

}  // namespace zolt
