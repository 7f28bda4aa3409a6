#include "app/ClosedTerminals.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "app/PaneLife.h"

namespace zolt {

namespace {

std::vector<TerminalPane*> panesOf(const ClosedTerminals::Closed& closed) {
  if (const auto* pane = std::get_if<ClosedTerminals::Pane>(&closed)) return {pane->pane.pane.get()};
  if (const auto* tab = std::get_if<ClosedTerminals::Tab>(&closed)) {
    const std::vector<QWidget*> widgets = tab->tab.view->panes();
    std::vector<TerminalPane*> panes(widgets.size());
    std::ranges::transform(widgets, panes.begin(), [](QWidget* each) { return static_cast<TerminalPane*>(each); });
    return panes;
  }
  return static_cast<TerminalTabs&>(
             std::get<ClosedTerminals::Window>(closed).window->contentViewController().rootView().area())
      .panes();
}

bool isOver(const ClosedTerminals::Closed& closed) {
  return std::ranges::all_of(panesOf(closed), [](const TerminalPane* pane) {
    const PaneLife* life = PaneLife::of(*pane);
    return life != nullptr && life->isOver();
  });
}

}  // namespace

ClosedTerminals::ClosedTerminals(Clock& clock) : m_clock(clock) {}

ClosedTerminals::~ClosedTerminals() = default;

void ClosedTerminals::keep(Closed closed, std::chrono::milliseconds time) {
  const std::uint64_t number = ++m_lastNumber;
  auto timer = m_clock.makeTimer([this, number] { giveUp(number); });
  timer->start(time);
  m_kept.push_back({.closed = std::move(closed), .timer = std::move(timer), .number = number});
}

std::optional<ClosedTerminals::Closed> ClosedTerminals::takeLast() {
  while (!m_kept.empty()) {
    Kept last = std::move(m_kept.back());
    m_kept.pop_back();
    if (!isOver(last.closed)) return std::move(last.closed);
  }
  return std::nullopt;
}

void ClosedTerminals::giveUp(std::uint64_t number) {
  const auto found = std::ranges::find(m_kept, number, &Kept::number);
  if (found == m_kept.end()) return;
  const Kept given = std::move(*found);  // its end may ask for what is kept
  m_kept.erase(found);
}

}  // namespace zolt
