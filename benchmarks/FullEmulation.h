#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "settings/Config.h"
#include "settings/EmulationSettingsStore.h"
#include "view/ContentView.h"
#include "view/EmulationSurface.h"
#include "view/TerminalTabs.h"

namespace zolt::bench {

/// The full emulation in windows of this process, with the user's settings. Main thread.
class FullEmulation {
 public:
  FullEmulation() { m_config.setupDefaults(); }

  /// What a window shows: a terminal of `makeTerminal` in the full emulation. Must not outlive this.
  ContentView::MakeArea areaOf(ContentView::MakeTerminal makeTerminal) {
    return [this, makeTerminal = std::move(makeTerminal)](const TerminalSize& size) {
      auto pane = std::make_unique<TerminalPane>(
          makeTerminal(size), [&](TerminalController& terminal, QWidget* parent) -> std::unique_ptr<TerminalSurface> {
            return std::make_unique<EmulationSurface>(terminal, size, m_settings, parent);
          });
      return std::make_unique<TerminalTabs>(std::move(pane), nullptr);
    };
  }

 private:
  UserDefaults& m_defaults = UserDefaults::standard();
  Config m_config{m_defaults};
  EmulationSettingsStore m_settings{m_config, m_defaults};
};

/// Makes the terminal of a window that runs `executable`, an absolute path, with `arguments`, at least one.
inline ContentView::MakeTerminal terminalWith(const std::string& executable,
                                              const std::vector<std::string>& arguments) {
  return [=](const TerminalSize& size) {
    return std::make_unique<TerminalController>(
        Shell{.name = executable, .executable = executable, .args = arguments, .icon = ""},
        TerminalController::Restart::Never, size);
  };
}

}  // namespace zolt::bench
