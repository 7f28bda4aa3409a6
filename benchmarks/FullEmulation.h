#pragma once

#include <memory>
#include <string>
#include <vector>

#include "settings/Config.h"
#include "settings/EmulationSettingsStore.h"
#include "view/ContentView.h"
#include "view/EmulationSurface.h"

namespace zolt::bench {

/// The full emulation in windows of this process, with the user's settings. Main thread.
class FullEmulation {
 public:
  FullEmulation() { m_config.setupDefaults(); }

  /// Makes the display of a window; must not outlive this.
  ContentView::MakeSurface makeSurface() {
    return [this](TerminalController& terminal, QWidget* parent) -> std::unique_ptr<TerminalSurface> {
      return std::make_unique<EmulationSurface>(terminal, TerminalSize{.rows = 24, .columns = 80}, m_settings, parent);
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
