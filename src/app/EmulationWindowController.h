#pragma once

#include <QObject>
#include <string>

#include "app/TerminalWindow.h"
#include "desktop/BlurBehind.h"
#include "platform/Clock.h"
#include "settings/EmulationSettingsStore.h"
#include "view/EmulationSurface.h"

namespace zolt {

/// What a window of the full emulation does besides showing its terminal: its title is the program's; a bell asks for
/// attention where the window has not the focus; what shows through it is blurred where that is set; closing it ends
/// its terminal, after a question where a program runs in the foreground; and when its shell ends, it closes or says
/// so. A child of the window. Main thread.
class EmulationWindowController : public QObject {
  Q_OBJECT

 public:
  /// A shell that fails sooner than this after its start does not close its window: why it failed is there to read.
  static constexpr std::chrono::seconds shortestLife{2};

  /// `settings` and `clock` must outlive the window, whose surface must be that of the full emulation.
  EmulationWindowController(TerminalWindow& window, const EmulationSettingsStore& settings,
                            Clock& clock = Clock::steady());

  /// Types `command` and Return into the shell, once it has printed something or a second has passed.
  void typeFirst(const std::string& command);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  TerminalController& terminal();
  EmulationSurface& surface();
  void followBlur();
  void showTitle(const QString& title);
  bool mayClose();
  void shellEnded(int status);
  void stayOpen(const QString& notice);

  TerminalWindow& m_window;
  const EmulationSettingsStore& m_settings;
  Clock& m_clock;
  Clock::TimePoint m_start;
  BlurBehind m_blur;
  std::string m_command;  // still to be typed
  bool m_hasEnded = false;
};

}  // namespace zolt
