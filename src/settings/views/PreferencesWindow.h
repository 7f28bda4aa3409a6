#pragma once

#include <QPoint>
#include <QWidget>

#include "settings/views/PreferencesView.h"

namespace zolt {

/// The preferences window. Closing it, or pressing Escape, only hides it: it keeps its tab as long as it exists.
///
/// It opens where the user left it, even after a restart, unless that screen is gone.
class PreferencesWindow : public QWidget {
  Q_OBJECT

 public:
  /// The arguments must outlive the window.
  PreferencesWindow(Config& config, UserDefaults& defaults, ShellManager& shells);
  ~PreferencesWindow() override;

  PreferencesView& view() { return *m_view; }
  void setVisible(bool visible) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void fitText();
  void moveToStoredPlace();
  void storePlace();

  UserDefaults& m_defaults;
  PreferencesView* m_view;
  QPoint m_openedAt;
  bool m_isPlaced = false;
};

}  // namespace zolt
