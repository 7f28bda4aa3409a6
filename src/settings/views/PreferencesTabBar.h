#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QString>
#include <QWidget>

#include "controls/KeyboardFocus.h"

namespace zolt {

/// One tab: a symbol above its label.
class TabButton : public QAbstractButton {
  Q_OBJECT

 public:
  TabButton(const QString& label, const QString& symbolName, QWidget* parent);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString m_symbolName;
  KeyboardFocus m_focus{*this};
};

/// The tabs of a window, side by side and centred, the selected one highlighted. It is one tab stop; the arrow keys
/// move the selection.
class PreferencesTabBar : public QWidget {
  Q_OBJECT

 public:
  explicit PreferencesTabBar(QWidget* parent = nullptr);

  /// Appends a tab; `shortcut` selects it from anywhere in the window.
  TabButton* addTab(const QString& label, const QString& symbolName, const QKeySequence& shortcut);
  int count() const { return static_cast<int>(m_group.buttons().size()); }
  /// Selects a tab without emitting `selected`.
  void setCurrentIndex(int index);

 Q_SIGNALS:
  /// The user clicked a tab or pressed its shortcut.
  void selected(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QButtonGroup m_group;
};

}  // namespace zolt
