#pragma once

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace zolt {

/// Our own buttons for screen readers: a switch is a check box, a segment a radio button, a tab a page tab. The only
/// action is a click, so fixed controls stay fixed.
class ButtonAccessible : public QAccessibleWidget {
 public:
  ButtonAccessible(QAbstractButton& button, QAccessible::Role role);

  /// Sets the role of every widget of exactly this class. Call it before the first is shown.
  static void setRole(const QMetaObject& type, QAccessible::Role role);

  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  QStringList actionNames() const override;
  void doAction(const QString& action) override;

 private:
  QAbstractButton& m_button;
};

}  // namespace zolt
