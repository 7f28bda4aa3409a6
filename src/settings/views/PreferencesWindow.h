#pragma once

#include <QWidget>

#include "settings/views/PreferencesView.h"

namespace zolt {

/// The preferences' own window. Closing it, also by Escape, hides it: it keeps its tab for as long as it exists.
class PreferencesWindow : public QWidget {
  Q_OBJECT

 public:
  /// What is shown must outlive the window.
  PreferencesWindow(Config& config, UserDefaults& defaults, ShellManager& shells);

  PreferencesView& view() { return *m_view; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  PreferencesView* m_view;
};

}  // namespace zolt
