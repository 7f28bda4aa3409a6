#include "view/SingleTerminal.h"

#include <QVBoxLayout>

namespace zolt {

SingleTerminal::SingleTerminal(std::unique_ptr<TerminalPane> pane, QWidget* parent)
    : TerminalArea(parent), m_pane(pane.release()) {
  auto* stack = new QVBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->addWidget(m_pane);
  setFocusProxy(&surface().canvas());
}

}  // namespace zolt
