#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>

#include "desktop/DesktopNotifications.h"
#include "platform/Environment.h"
#include "settings/EmulationSettingsStore.h"
#include "view/EmulationSurface.h"
#include "view/TerminalPane.h"

namespace zolt {

/// Makes the panes of the full emulation, as the settings say. Main thread.
class PaneMaker {
 public:
  /// `settings` and `desktop` must outlive the panes. Every shell inherits `environment`.
  PaneMaker(EmulationSettingsStore& settings, DesktopNotifications& desktop, Environment environment);

  struct Wanted {
    std::optional<Shell> shell{};    ///< otherwise the one that the user has set
    bool isForProgram = false;       ///< `shell` is a program: it begins and ends by itself
    std::optional<Shell> program{};  ///< in place of a shell: nothing is typed into it
    TerminalSize size{};
    std::string folder{};  ///< the working directory; this process's if empty
    EarlierText earlier{};
  };
  /// The shell is started first, so that its prompt is there for the first frame. If it cannot be run, the
  /// pane says so.
  std::unique_ptr<TerminalPane> make(const Wanted& wanted);
  /// The terminal's size in a canvas of `area` logical pixels on a screen with `scale` device pixels to one of them.
  TerminalSize sizeIn(QSize area, double scale) const;

 private:
  EmulationSettingsStore& m_settings;
  DesktopNotifications& m_desktop;
  Environment m_environment;
};

}  // namespace zolt
