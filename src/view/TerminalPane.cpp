#include "view/TerminalPane.h"

#include <QVBoxLayout>
#include <utility>

namespace zolt {

TerminalPane::TerminalPane(std::unique_ptr<TerminalController> terminal, const MakeSurface& makeSurface,
                           QWidget* parent)
    : QWidget(parent),
      m_terminal(std::move(terminal)),
      m_container(
          new TerminalContainerView([&](QWidget* container) { return makeSurface(*m_terminal, container); }, this)) {
  auto* stack = new QVBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->addWidget(m_container);
  setFocusProxy(m_container);
}

TerminalPane::~TerminalPane() {
  delete m_container;  // its display writes to the terminal until it is gone
}

}  // namespace zolt
