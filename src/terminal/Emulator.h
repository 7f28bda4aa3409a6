#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <variant>
#include <vector>

#include "base/TerminalSize.h"
#include "platform/FileHandle.h"
#include "vt/Terminal.h"

namespace zolt {

/// Runs the engine of one terminal on a thread of its own, in the order in which output and changes arrive. Only little
/// output that finds the engine idle, such as the echo of a key, is processed by the caller: a hand-over would take
/// longer.
///
/// The receiver is woken once for each snapshot, and there is never more than one that it has not taken: however fast
/// output arrives, screens that nobody looks at are not made. No call waits for the thread.
class Emulator {
 public:
  /// Called on the emulation thread, or within `feed`.
  struct Handlers {
    std::function<void()> changed;                   ///< there is an update to take
    std::function<void(std::string bytes)> replied;  ///< to be written to the program
  };

  Emulator(const TerminalSize& size, vt::TerminalSettings settings, Handlers handlers);
  /// Goes on with a terminal that has been used before.
  Emulator(std::unique_ptr<vt::Terminal> terminal, Handlers handlers);
  /// Ends the thread; output that has not been processed yet is dropped, and no handler is called any more.
  ~Emulator();
  Emulator(const Emulator&) = delete;
  Emulator& operator=(const Emulator&) = delete;

  /// Processes a program's output: within the call if it is no more than this and the thread has nothing to do. Any
  /// thread.
  void feed(Bytes bytes);
  static constexpr std::size_t processedAtOnceBytes = 512;
  using Change = std::function<void(vt::Terminal& terminal)>;
  /// Changes the terminal on its thread. Any thread.
  void change(Change change);

  /// What has happened since the last update that was taken.
  struct Update {
    std::shared_ptr<const vt::ScreenSnapshot> snapshot;  ///< null: the screen is as it was
    vt::TerminalEvents events;
  };
  /// Takes the latest update. One thread.
  Update take();
  /// How much was fed so far. Any thread.
  std::uint64_t bytesFed() const { return m_bytesFed; }
  /// Whether everything that was fed has been processed, and its result taken or nothing changed. Any thread.
  bool isSettled() const;

 private:
  using Work = std::variant<Bytes, Change>;

  void run();
  bool process(Work& work);
  void publish();
  static std::chrono::milliseconds now();

  const Handlers m_handlers;
  std::atomic<std::uint64_t> m_bytesFed{0};
  const std::unique_ptr<vt::Terminal> m_terminal;  // of whoever has set m_busy

  mutable std::mutex m_mutex;  // guards everything below
  std::condition_variable m_woken;
  std::vector<Work> m_queue;
  bool m_busy = false;
  bool m_stopping = false;
  bool m_changed = true;  // since the last snapshot
  bool m_wanted = true;   // the last snapshot was taken
  std::shared_ptr<const vt::ScreenSnapshot> m_latest;
  vt::TerminalEvents m_events;

  std::thread m_thread;
};

}  // namespace zolt
