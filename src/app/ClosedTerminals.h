#pragma once

#include <QObject>
#include <QPointer>
#include <deque>
#include <memory>
#include <variant>

#include "app/TerminalWindow.h"
#include "platform/Clock.h"
#include "view/TerminalTabs.h"

namespace zolt {

/// What was closed in the full emulation and can still be brought back, its shells alive: panes, tabs and windows, the
/// latest last. After a while each is given up, which ends its shells. Main thread.
class ClosedTerminals : public QObject {
  Q_OBJECT

 public:
  explicit ClosedTerminals(Clock& clock = Clock::steady());
  ~ClosedTerminals() override;

  /// Where a pane or tab was: its area, while that is there.
  struct Pane {
    DetachedPane pane;
    QPointer<TerminalTabs> area;
  };
  struct Tab {
    DetachedTab tab;
    QPointer<TerminalTabs> area;
    int index = 0;
  };
  struct Window {
    std::unique_ptr<TerminalWindow> window;
  };
  using Closed = std::variant<Pane, Tab, Window>;

  /// Keeps what was closed for `time`.
  void keep(Closed closed, std::chrono::milliseconds time);
  /// Takes back what was closed last, skipping what has no running shell left. None if there is nothing.
  std::optional<Closed> takeLast();
  bool empty() const { return m_kept.empty(); }

 private:
  struct Kept {
    Closed closed;
    std::unique_ptr<Timer> timer;
    std::uint64_t number;
  };
  void giveUp(std::uint64_t number);

  Clock& m_clock;
  std::deque<Kept> m_kept;
  std::uint64_t m_lastNumber = 0;
};

}  // namespace zolt
