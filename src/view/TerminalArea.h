#pragma once

#include <QWidget>

#include "session/TerminalController.h"
#include "view/TerminalSurface.h"

namespace zolt {

/// What a window shows its terminals in. One of them, which has the keyboard or had it last, is the current one. Main
/// thread.
class TerminalArea : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  virtual TerminalController& terminal() = 0;
  virtual TerminalSurface& surface() = 0;
  /// Shows one more terminal, if it may have one; false if it has no tabs.
  virtual bool addTab() = 0;
  /// Empties the terminal that the user's command is for.
  virtual void clear() = 0;
  /// While held, terminals are not told of new sizes; for changes in steps that are one change to the user.
  virtual void holdGridSize(bool held) = 0;
};

}  // namespace zolt
