#pragma once

#include <QStringList>
#include <QWidget>

#include "platform/UserDefaults.h"
#include "session/ShellManager.h"
#include "settings/EmulationSettingsStore.h"

class QStackedWidget;

namespace zolt {

class PreferencesTabBar;

/// The content of the preferences window: four tabs, each a form. Main thread.
class PreferencesView : public QWidget {
  Q_OBJECT

 public:
  /// `tabs` is kept but not shown: the tabs have their own labels. The other arguments must outlive the view.
  PreferencesView(QStringList tabs, Config& config, UserDefaults& defaults, ShellManager& shells,
                  QWidget* parent = nullptr);

  const QStringList& tabs() const { return m_tabs; }
  /// The index of the current tab; initially 0, the general one.
  int selectedTab() const;
  /// Shows the tab at `index`; ignores an index out of range.
  void setSelectedTab(int index);

 private:
  void stepTab(int step);

  QStringList m_tabs;
  EmulationSettingsStore m_emulation;
  PreferencesTabBar* m_bar;
  QStackedWidget* m_pages;
};

}  // namespace zolt
