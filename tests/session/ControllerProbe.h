#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "session/TerminalController.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// The rows of the grid as lines of text, without the blanks at the ends of rows and the blank rows at the bottom.
inline std::string gridText(TerminalController& controller) {
  std::string text;
  for (const TerminalScreenBuffer::Row& row : controller.getScreenContent()) {
    std::string line;
    for (const TerminalCell& cell : row) {
      line += cell.character;
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
  }
  return text.substr(0, text.find_last_not_of('\n') + 1);
}

/// A controller, and how and when its shells have ended.
class ControllerProbe {
 public:
  explicit ControllerProbe(Shell shell, TerminalController::Restart restart = TerminalController::Restart::AfterFailure,
                           Clock& clock = Clock::steady())
      : m_controller(std::move(shell), restart, {}, {}, processEnvironment(), clock) {
    QObject::connect(&m_controller, &TerminalController::shellEnded, [this](int status) {
      statuses.push_back(status);
      times.push_back(std::chrono::steady_clock::now());
    });
  }

  std::vector<std::int32_t> statuses;
  std::vector<std::chrono::steady_clock::time_point> times;

  TerminalController* operator->() { return &m_controller; }
  TerminalController& operator*() { return m_controller; }

  bool gridShows(const std::string& text) {
    return waitFor([&] { return gridText(m_controller).find(text) != std::string::npos; });
  }
  bool hasEnded(std::size_t count = 1) const {
    return waitFor([&] { return statuses.size() >= count; });
  }
  bool runs() {
    return waitFor([this] { return m_controller.ptySession().isRunning(); });
  }

 private:
  TerminalController m_controller;
};

}  // namespace zolt::test
