#pragma once

#include <QWidget>
#include <memory>

#include "session/TerminalController.h"
#include "view/TerminalContainerView.h"

namespace zolt {

/// A terminal with its display, filling a widget that can be moved from one place to another. Owns both. Main thread.
class TerminalPane : public QWidget {
  Q_OBJECT

 public:
  /// Makes the display of a terminal, with its canvas a child of `parent`.
  using MakeSurface = std::function<std::unique_ptr<TerminalSurface>(TerminalController& terminal, QWidget* parent)>;

  /// Releasing the pane ends the terminal's shell.
  TerminalPane(std::unique_ptr<TerminalController> terminal, const MakeSurface& makeSurface, QWidget* parent = nullptr);
  ~TerminalPane() override;

  TerminalController& terminal() { return *m_terminal; }
  TerminalSurface& surface() { return m_container->surface(); }

 private:
  std::unique_ptr<TerminalController> m_terminal;
  TerminalContainerView* m_container;  // a child
};

}  // namespace zolt
