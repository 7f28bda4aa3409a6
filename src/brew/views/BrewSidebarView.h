#pragma once

#include <QListView>
#include <QStackedWidget>
#include <QToolButton>
#include <QWidget>

#include "brew/BrewManager.h"
#include "brew/views/BrewListModel.h"
#include "controls/SecondaryLabel.h"
#include "controls/SegmentedPicker.h"
#include "controls/TextField.h"

namespace zolt {

/// The Homebrew sidebar: installed and outdated packages, a search, a status line. It shows what the manager publishes
/// and forwards what the user asks for. Main thread.
class BrewSidebarView : public QWidget {
  Q_OBJECT

 public:
  /// Uses the process's shared manager, creating it if needed.
  explicit BrewSidebarView(QWidget* parent = nullptr);
  /// `manager` must outlive the view.
  explicit BrewSidebarView(BrewManager& manager, QWidget* parent = nullptr);

 private:
  enum Tab { Installed, Outdated, Search };

  QWidget* makeHeader();
  QWidget* makePlaceholder();
  QWidget* makeStatusBar();
  void searchTextChanged(const QString& text);
  /// Schedules a refresh in a later turn of the event loop; changes until then are merged.
  void redrawLater();
  void redraw();
  std::vector<BrewSection> sections() const;
  void showContextMenu(const QPoint& point);
  /// Opens the menu at `point` of the list.
  void openMenuOf(const QModelIndex& index, const QPoint& point);
  void addContextActions(class QMenu& menu, const BrewPackage& package);

  BrewManager& m_manager;
  TextField* m_search;  // these are children
  SegmentedPicker* m_tabs;
  QStackedWidget* m_pages;
  QListView* m_list;
  BrewListModel* m_model;
  SecondaryLabel* m_status;
  Tab m_selectedTab = Installed;
  bool m_redrawing = false;
};

}  // namespace zolt
