#pragma once

#include <QString>
#include <QWidget>

#include "controls/SecondaryLabel.h"

namespace zolt {

/// The text of a key combination in a fixed pitch, on a rounded background of its own colour made faint.
class ShortcutText : public SecondaryLabel {
  Q_OBJECT

 public:
  explicit ShortcutText(const QString& shortcut, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

/// A command's name and, at the other edge, its key combination as it is shown.
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
