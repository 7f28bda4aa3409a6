// The panes of the tabs: split, taken out and put back, gone to, sized, and typed into together.
#include <QApplication>
#include <algorithm>
#include <utility>

#include "view/TerminalTabs.h"
#include "view/TypingBar.h"

namespace zolt {

void TerminalTabs::bringUp(TerminalPane& pane) {
  const int index = indexOf(pane);
  if (index < 0) return;
  setCurrent(pane);
  setCurrentIndex(index);
  pane.setFocus();
}

void TerminalTabs::split(Direction side) {
  if (m_makePane && openSplit(currentPane(), side, {}) == nullptr) QApplication::beep();
}

TerminalPane* TerminalTabs::openSplit(TerminalPane& beside, Direction side, const Wanted& wanted) {
  if (!m_makePane) return nullptr;
  SplitView& split = *tabOf(beside)->view;
  // The shell has its size from the start.
  SplitLayout next = split.layoutOfPanes();
  constexpr PaneId kAdded{0};  // no pane's
  next.split(split.idOf(beside), side, kAdded);
  const auto places = next.places({.width = split.width(), .height = split.height()}).panes;
  const PaneSize size = std::ranges::find(places, kAdded, &SplitLayout::Place::pane)->rect.size;
  const bool hasRoom = size.width >= SplitLayout::smallestPane.width && size.height >= SplitLayout::smallestPane.height;
  if (!hasRoom) return nullptr;
  auto pane = m_makePane({.area = {size.width, size.height},
                          .scale = devicePixelRatioF(),
                          .folder = wanted.folder ? *wanted.folder : surfaceOf(beside).folder(),
                          .program = wanted.program});
  TerminalPane* const added = pane.get();
  splitWith(beside, side, std::move(pane));
  return added;
}

void TerminalTabs::splitWith(TerminalPane& beside, Direction side, std::unique_ptr<TerminalPane> added) {
  TerminalPane& pane = *added.release();
  splitWith(beside, side, DetachedTab{.view = std::make_unique<SplitView>(pane), .name = {}, .current = &pane});
}

void TerminalTabs::splitWith(TerminalPane& beside, Direction side, DetachedTab added) {
  const int index = indexOf(beside);
  const std::vector<QWidget*> widgets = added.view->panes();
  TerminalPane& current = added.current ? *added.current : *toPane(widgets.front());
  tab(index).view->split(beside, side, *added.view);
  for (QWidget* widget : widgets) {
    watch(*toPane(widget));
    Q_EMIT paneAdded(toPane(widget));
  }
  updateMarks(index);
  bringUp(current);
  updateTyping(index);
  Q_EMIT arrangementChanged();
}

DetachedPane TerminalTabs::takePane(TerminalPane& pane) {
  Tab& holder = *tabOf(pane);
  SplitView& view = *holder.view;
  Q_EMIT paneLeaving(&pane);
  unwatch(pane);
  DetachedPane taken{.pane = nullptr, .from = &view, .id = view.idOf(pane), .before = view.layoutOfPanes()};
  // What is nearest takes the keyboard.
  QWidget* next = nullptr;
  for (const Direction direction : {Direction::Left, Direction::Up, Direction::Right, Direction::Down}) {
    if (next == nullptr) next = view.neighbour(pane, direction);
  }
  for (QWidget* each : view.panes()) {
    if (next == nullptr && each != &pane) next = each;  // there is no room for where they stand
  }
  const bool wasCurrent = holder.current == &pane;
  if (wasCurrent) holder.current = toPane(next);
  view.take(pane);
  taken.pane.reset(&pane);
  const int index = static_cast<int>(&holder - m_tabs.data());
  updateTitle(index);
  updateMarks(index);
  updateTyping(index);
  if (index == currentIndex()) {
    setFocusProxy(&currentPane());
    if (wasCurrent) currentPane().setFocus();
  }
  Q_EMIT arrangementChanged();
  return taken;
}

void TerminalTabs::putBack(DetachedPane taken) {
  TerminalPane& pane = *taken.pane.release();
  const auto holder = std::ranges::find(m_tabs, taken.from.data(), &Tab::view);
  if (holder != m_tabs.end() && holder->view->putBack(pane, taken.id, taken.before)) {
    watch(pane);
    Q_EMIT paneAdded(&pane);
    bringUp(pane);
    updateMarks(indexOf(pane));
    updateTyping(indexOf(pane));
    Q_EMIT arrangementChanged();
  } else {
    insert(new SplitView(pane), QString(), pane, currentIndex() + 1);
  }
}

void TerminalTabs::closePane() {
  Q_EMIT paneCloseWanted(&currentPane());
}

void TerminalTabs::go(Direction direction) {
  if (QWidget* next = tab(currentIndex()).view->neighbour(currentPane(), direction)) bringUp(*toPane(next));
}

void TerminalTabs::moveDivider(Direction direction) {
  const CellMetrics& cell = surface().canvas().cellMetrics();
  const bool isSideways = direction == Direction::Left || direction == Direction::Right;
  const double pixels = (isSideways ? 2 * cell.width : cell.height).toDouble() / devicePixelRatioF();
  tab(currentIndex()).view->moveEdge(currentPane(), direction, static_cast<int>(pixels));
}

void TerminalTabs::equalisePanes() {
  tab(currentIndex()).view->equalise();
}

void TerminalTabs::zoomPane() {
  SplitView& split = *tab(currentIndex()).view;
  split.setZoomed(split.zoomed() == nullptr ? &currentPane() : nullptr);
  updateTitle(currentIndex());
  currentPane().setFocus();
}

void TerminalTabs::movePaneToNewTab() {
  if (panesOf(currentIndex()).size() == 1) return;
  TerminalPane& pane = *takePane(currentPane()).pane.release();
  insert(new SplitView(pane), QString(), pane, currentIndex() + 1);
}

// With the one that follows, and the last with the first.
void TerminalTabs::swapPanes() {
  const std::vector<TerminalPane*> all = panesOf(currentIndex());
  auto next = std::ranges::find(all, &currentPane()) + 1;
  if (next == all.end()) next = all.begin();
  tab(currentIndex()).view->swap(currentPane(), **next);
}

void TerminalTabs::typeIntoAll() {
  Tab& current = tab(currentIndex());
  current.typesIntoAll = !current.typesIntoAll;
  updateTyping(currentIndex());
}

// To be called whenever a pane has come or gone.
void TerminalTabs::updateTyping(int index) {
  const std::vector<TerminalPane*> all = panesOf(index);
  Tab& typed = tab(index);
  typed.typesIntoAll = typed.typesIntoAll && all.size() > 1;
  for (TerminalPane* pane : all) {
    std::vector<EmulationInput*> others;
    for (TerminalPane* each : all) {
      if (typed.typesIntoAll && each != pane) others.push_back(&surfaceOf(*each).display().input());
    }
    surfaceOf(*pane).display().input().setFollowers(std::move(others));
  }
  if (index != currentIndex()) return;
  if (typed.typesIntoAll) m_typingBar->setCount(static_cast<int>(all.size()));
  m_typingBar->setVisible(typed.typesIntoAll);
  updateDimming();
}

void TerminalTabs::copyCommandOutput() {
  if (surface().selectCommandOutput()) surface().canvas().copy();
}

}  // namespace zolt
