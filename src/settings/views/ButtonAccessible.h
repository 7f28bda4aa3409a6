#pragma once

#include <QAbstractButton>
#include <QAccessibleWidget>

namespace zolt {

/// What a screen reader sees of the form's own buttons: switches are check boxes, segments radio buttons, tabs page
/// tabs. All it can do to one is a click, so what a click cannot change it cannot change either.
class ButtonAccessible : public QAccessibleWidget {
 public:
  ButtonAccessible(QAbstractButton& button, QAccessible::Role role);

  /// Makes these interfaces known to Qt; the first call counts.
  static void install();

  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  QStringList actionNames() const override;
  void doAction(const QString& action) override;

 private:
  QAbstractButton& m_button;
};

}  // namespace zolt
