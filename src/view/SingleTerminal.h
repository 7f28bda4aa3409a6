#pragma once

#include <memory>

#include "view/TerminalArea.h"
#include "view/TerminalPane.h"

namespace zolt {

/// One terminal, without tabs. Main thread.
class SingleTerminal : public TerminalArea {
  Q_OBJECT

 public:
  explicit SingleTerminal(std::unique_ptr<TerminalPane> pane, QWidget* parent = nullptr);

  TerminalController& terminal() override { return m_pane->terminal(); }
  TerminalSurface& surface() override { return m_pane->surface(); }
  bool addTab() override { return false; }
  void clear() override { surface().clear(); }
  void holdGridSize(bool held) override { surface().canvas().holdGridSize(held); }

 private:
  TerminalPane* m_pane;  // a child
};

}  // namespace zolt
