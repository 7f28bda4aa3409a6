#pragma once

#include <QString>
#include <QWidget>

#include "controls/SecondaryLabel.h"

namespace zolt {

/// A key combination in a fixed-pitch font, on a rounded background in a faint tint of its text colour.
class ShortcutText : public SecondaryLabel {
  Q_OBJECT

 public:
  explicit ShortcutText(const QString& shortcut, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// A command's name and, at the trailing edge, its key combination.
class KeybindingRow : public QWidget {
  Q_OBJECT

 public:
  KeybindingRow(const QString& action, const QString& shortcut, QWidget* parent = nullptr);

  const QString& action() const { return m_action; }
  const QString& shortcut() const { return m_shortcut; }

 private:
  QString m_action;
  QString m_shortcut;
};

}  // namespace zolt
