#include "view/TerminalContainerView.h"

#include <QVBoxLayout>

namespace zolt {

TerminalContainerView::TerminalContainerView(TerminalController& terminal, QWidget* parent) : QWidget(parent) {
  const TerminalTextView view(terminal);
  m_coordinator = view.makeCoordinator();
  m_textView = view.makeNSView(*m_coordinator, this);
  auto* stack = new QVBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->addWidget(m_textView);
  setFocusProxy(m_textView);
  m_finder = std::make_unique<Finder>(*m_textView);
}

TerminalContainerView::~TerminalContainerView() = default;

}  // namespace zolt
