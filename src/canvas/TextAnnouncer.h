#pragma once

#include <QStringList>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "canvas/TextChange.h"
#include "canvas/TextInView.h"
#include "platform/Clock.h"

namespace zolt {

/// Tells how a text in view changes, calmly: at most ten insertions a second, however often it changes. What is skipped
/// in between is told as one change from what was told last to the newest. Main thread.
class TextAnnouncer {
 public:
  /// What there is to tell of: the rows, the caret and the selected parts.
  struct State {
    QStringList rows;
    int caret = 0;  ///< an offset in the text
    std::vector<OffsetRange> selection{};
  };
  /// The changes of the text come first, then the caret, then the selection, each only if it has changed.
  struct Handlers {
    std::function<State()> read;
    std::function<void(const TextChange&)> textChanged;
    std::function<void(int caret)> caretMoved;
    std::function<void(const std::vector<OffsetRange>&)> selectionChanged;
  };

  /// How long one insertion keeps the next one waiting.
  static constexpr std::chrono::milliseconds interval{100};
  /// More changes at a time are told as one.
  static constexpr std::size_t maxChanges = 4;

  explicit TextAnnouncer(Handlers handlers, Clock& clock = Clock::steady());

  /// Tells what changes from now on; until then and after `stop`, nothing is read.
  void start();
  void stop();
  /// To be called when something may have changed. It is told from the event loop.
  void update();

 private:
  void tell();

  Handlers m_handlers;
  Clock& m_clock;
  Clock::TimePoint m_next;      // the earliest time of the next announcement
  std::optional<State> m_told;  // none: nobody listens
  std::unique_ptr<Timer> m_timer;
};

}  // namespace zolt
