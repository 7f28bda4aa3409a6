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

TerminalTabs& areaOf(const TabDrag& dragged) {
  return static_cast<TerminalTabs&>(*dragged.from->parentWidget()->parentWidget());
}

// Nothing can be split with itself.
bool isPartOf(const TerminalPane& pane, const TabDrag& dragged) {
  return dragged.pane == nullptr ? areaOf(dragged).indexOf(pane) == dragged.index() : dragged.pane == &pane;
}

}  // namespace

// Tabs that are dropped.

// A pane that is the last of its tab by now is all of it.
DetachedTab TerminalTabs::taken(const TabDrag& dragged) {
  TerminalTabs& from = areaOf(dragged);
  const bool isWhole = dragged.pane == nullptr || from.panesOf(dragged.index()).size() == 1;
  return isWhole ? from.takeTab(dragged.index()) : from.tabOfPane(*toPane(dragged.pane));
}

void TerminalTabs::takeIn(const TabDrag& dragged, int before) {
  const int index = dragged.index();
  const bool isWhole = dragged.pane == nullptr || areaOf(dragged).panesOf(index).size() == 1;
  if (&areaOf(dragged) == this && isWhole) {
    m_strip->moveTab(index, before > index ? before - 1 : before);
    return;
  }
  insertTab(taken(dragged), before);
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
  const bool isSelf = isPartOf(*target.pane, *dragged);
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
  if (isPartOf(*target.pane, *dragged)) return;
  if (!target.side) return takeIn(*dragged, currentIndex() + 1);
  splitWith(*target.pane, *target.side, taken(*dragged));
  window()->activateWindow();
}

}  // namespace zolt
