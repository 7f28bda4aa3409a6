#include "view/ContentView.h"

#include <QHBoxLayout>
#include <QPalette>

namespace zolt {

ContentView::ContentView(std::unique_ptr<TerminalController> terminal, QWidget* parent)
    : QWidget(parent), m_terminal(std::move(terminal)), m_container(new TerminalContainerView(*m_terminal, this)) {
  QPalette black = palette();
  black.setColor(QPalette::Window, Qt::black);
  setPalette(black);
  setAutoFillBackground(true);
  auto* stack = new QHBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->setSpacing(0);
  stack->addWidget(m_container);
  setFocusProxy(m_container);
}

ContentView::~ContentView() = default;

}  // namespace zolt
