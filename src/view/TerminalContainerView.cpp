#include "view/TerminalContainerView.h"

#include <QVBoxLayout>

namespace zolt {

TerminalContainerView::TerminalContainerView(const MakeSurface& makeSurface, QWidget* parent)
    : QWidget(parent), m_surface(makeSurface(this)) {
  auto* stack = new QVBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->addWidget(&m_surface->canvas());
  setFocusProxy(&m_surface->canvas());
  m_finder = std::make_unique<Finder>(*m_surface);
  connect(m_surface.get(), &TerminalSurface::findWanted, m_finder.get(), &Finder::open);
  connect(m_surface.get(), &TerminalSurface::findNextWanted, m_finder.get(), &Finder::next);
  connect(m_surface.get(), &TerminalSurface::findPreviousWanted, m_finder.get(), &Finder::previous);
}

TerminalContainerView::~TerminalContainerView() = default;

}  // namespace zolt
