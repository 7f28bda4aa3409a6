#pragma once

#include <QObject>
#include <chrono>
#include <functional>
#include <memory>

#include "canvas/TextCanvas.h"
#include "session/TerminalController.h"
#include "settings/EmulationSettings.h"
#include "terminal/EmulationInput.h"
#include "terminal/EmulationSource.h"
#include "terminal/Emulator.h"

namespace zolt {

/// What a terminal shows before its program prints anything: the text of an earlier session, and a line of our own.
struct EarlierText {
  std::shared_ptr<const vt::StoredTerminal> terminal;  ///< null: none
  std::string notice;                                  ///< control characters have no effect in it; empty: none
};

/// The line that says that an earlier text cannot be read; `reason` is the end of a sentence.
std::string lostTextNotice(const std::string& reason);

/// The font of the full emulation's canvas with these settings.
CanvasFont emulationFont(const EmulationSettings& settings);

/// Shows one terminal in the full emulation: ties its session, the engine on its thread, the canvas and the input
/// together. Main thread.
class EmulationDisplay : public QObject {
  Q_OBJECT

 public:
  /// Takes all output of `terminal`, which must outlive the display. The canvas is a child of `parent`. The terminal
  /// has `size` until the canvas is shown. `isDark`: what the colour scheme amounts to.
  EmulationDisplay(TerminalController& terminal, const TerminalSize& size, const EmulationSettings& settings,
                   bool isDark, QWidget* parent, Clock& clock = Clock::steady(), const EarlierText& earlier = {});
  ~EmulationDisplay() override;

  TextCanvas& canvas() { return *m_canvas; }
  EmulationSource& source() { return *m_source; }
  Emulator& emulator() { return *m_emulator; }
  EmulationInput& input() { return *m_input; }

  /// The settings from now on.
  void setSettings(const EmulationSettings& settings, bool isDark);
  /// Calls `shown` once everything that has been fed is in the frame, or after 5 s while ever more arrives.
  void whenSettled(std::function<void()> shown);
  /// Clears the history and all of the screen but the line of the cursor; nothing on the alternate screen.
  void clear();
  /// Shows a line of our own below what the program printed, on the main screen and in the usual rendition. For a
  /// program that has ended: its margins, character sets, mouse tracking and the like are reset, the cursor is hidden.
  void addNotice(const QString& line);

 Q_SIGNALS:
  /// There is a new screen.
  void screenChanged();
  /// The program has set the title, to an empty one if it takes it back.
  void titleChanged(const QString& title);
  void bellRang();
  /// The program wants the user to be notified (OSC 9, 777). Either may be empty.
  void notificationWanted(const QString& title, const QString& body);
  void commandEnded(const zolt::vt::EndedCommand& command);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void applyLooks();
  void takeEvents(const vt::TerminalEvents& events);
  void updateColors();
  void settle(std::function<void()> shown, std::chrono::steady_clock::time_point deadline);

  TerminalController& m_terminal;
  std::unique_ptr<Emulator> m_emulator;
  EmulationSource* m_source = nullptr;  // the canvas's
  TextCanvas* m_canvas = nullptr;       // a child of the parent
  std::unique_ptr<EmulationInput> m_input;
  EmulationSettings m_settings;
  QRgb m_selection = 0;  // the theme's, as the next
  QRgb m_selectedText = 0;
};

}  // namespace zolt
