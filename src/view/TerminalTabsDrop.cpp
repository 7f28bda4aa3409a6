// Tabs that are dropped on the strip or on a pane.
#include <QDragEnterEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "view/DropMark.h"
#include "view/TerminalTabs.h"

namespace zolt {

namespace {

// Dropped nearer to an edge than this share of the pane, a tab splits it there.
constexpr double kEdgeShare = 0.25;

}  // namespace

// Tabs that are dropped.

void TerminalTabs::takeIn(const TabDrag& dragged, int before) {
  auto* from = qobject_cast<TerminalTabs*>(dragged.from->parentWidget()->parentWidget());
  const int index = dragged.index();
  if (from == nullptr || index < 0) return;
  if (from == this) {
    m_strip->moveTab(index, before > index ? before - 1 : before);
    return;
  }
  insertTab(from->takeTab(index), before);
  window()->activateWindow();
}

TerminalTabs::Target TerminalTabs::targetAt(QPoint point) {
  TerminalPane* over = &currentPane();
  for (TerminalPane* pane : panesOf(currentIndex())) {
    const QRect area(pane->mapTo(this, QPoint()), pane->size());
    if (!pane->isVisible() || !area.contains(point)) continue;
    over = pane;
    const double x = static_cast<double>(point.x() - area.left()) / area.width();
    const double y = static_cast<double>(point.y() - area.top()) / area.height();
    const std::array<std::pair<double, Direction>, 4> edges{
        std::pair{x, Direction::Left}, {1 - x, Direction::Right}, {y, Direction::Up}, {1 - y, Direction::Down}};
    const auto nearest = std::ranges::min_element(edges);
    if (nearest->first < kEdgeShare) return {.pane = over, .side = nearest->second};
  }
  return {.pane = over, .side = std::nullopt};
}

void TerminalTabs::dragEnterEvent(QDragEnterEvent* event) {
  if (!m_makePane || !TabDrag::of(*event->mimeData())) return;
  m_dropMark = new DropMark(this);
  dragMoveEvent(event);
}

void TerminalTabs::dragMoveEvent(QDragMoveEvent* event) {
  const auto dragged = TabDrag::of(*event->mimeData());
  if (!dragged || m_dropMark == nullptr) return;
  const Target target = targetAt(event->position().toPoint());
  // A tab cannot be split with itself.
  const bool isSelf = dragged->from == m_strip && dragged->index() == currentIndex();
  event->setAccepted(!isSelf);
  QRect area(target.pane->mapTo(this, QPoint()), target.pane->size());
  if (target.side == Direction::Left) area.setWidth(area.width() / 2);
  if (target.side == Direction::Right) area.setLeft(area.center().x());
  if (target.side == Direction::Up) area.setHeight(area.height() / 2);
  if (target.side == Direction::Down) area.setTop(area.center().y());
  m_dropMark->setGeometry(area);
  m_dropMark->setVisible(!isSelf);
  m_dropMark->raise();
}

void TerminalTabs::dragLeaveEvent(QDragLeaveEvent*) {
  delete std::exchange(m_dropMark, nullptr);
}

void TerminalTabs::dropEvent(QDropEvent* event) {
  delete std::exchange(m_dropMark, nullptr);
  const auto dragged = TabDrag::of(*event->mimeData());
  if (!dragged) return;
  const Target target = targetAt(event->position().toPoint());
  event->acceptProposedAction();
  if (!target.side) return takeIn(*dragged, currentIndex() + 1);
  auto* from = qobject_cast<TerminalTabs*>(dragged->from->parentWidget()->parentWidget());
  if (from == nullptr || from->indexOf(*target.pane) == dragged->index()) return;
  // All its panes move, one beside the other.
  DetachedTab tab = from->takeTab(dragged->index());
  TerminalPane* beside = target.pane;
  Direction side = *target.side;
  for (QWidget* each : tab.view->panes()) {
    auto* pane = toPane(each);
    tab.view->take(*pane);
    splitWith(*beside, side, std::unique_ptr<TerminalPane>(pane));
    beside = pane;
    if (side == Direction::Left) side = Direction::Right;
    if (side == Direction::Up) side = Direction::Down;
  }
  window()->activateWindow();
}

}  // namespace zolt
