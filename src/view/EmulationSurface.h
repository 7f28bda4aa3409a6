#pragma once

#include <QColor>
#include <memory>
#include <string>

#include "settings/EmulationSettingsStore.h"
#include "terminal/EmulationDisplay.h"
#include "terminal/copying/CopyMode.h"
#include "terminal/hints/HintMode.h"
#include "view/TerminalSurface.h"
#include "vt/history/ScrollbackText.h"

namespace zolt {

class CopyModeBar;
class SystemScheme;

enum class PromptDirection { Earlier, Later };

/// The full emulation of a terminal, in step with its settings. Main thread.
class EmulationSurface : public TerminalSurface {
  Q_OBJECT

 public:
  /// As for EmulationDisplay. `settings` must outlive the surface.
  EmulationSurface(TerminalController& terminal, const TerminalSize& size, EmulationSettingsStore& settings,
                   QWidget* parent, const EarlierText& earlier = {});
  ~EmulationSurface() override;

  EmulationDisplay& display() { return *m_display; }
  /// Whether the theme is the dark one, and the background that it gives the terminal.
  bool isDark() const;
  QColor ground() const;
  /// Whether the cursor stands at the start of the screen, as before anything has been printed.
  bool isUntouched() const;
  /// What the program calls itself (OSC 0 and 2), on one line; empty if nothing.
  QString title() const;
  /// How far the program says it is (OSC 9;4).
  vt::Progress progress() const { return m_display->source().screen()->progress; }
  /// Where the program in the terminal is, as it says itself (OSC 7, this machine only), or else the shell's working
  /// directory; if that cannot be told or entered, where the shell was started.
  std::string folder() const;
  /// How much the program has printed, in bytes.
  std::uint64_t bytesPrinted() const { return m_display->emulator().bytesFed(); }
  /// Shows a line of our own, at the start before the shell prints anything, or at the end after it has ended. In both,
  /// nothing in the text is a control function.
  void addFirstNotice(const QString& line);
  void addLastNotice(const QString& line);

  /// Scrolls so that the prompt before, or after, the first row in view is at the top; past the last prompt, to the end
  /// of the text. Does nothing where there is none, or the shell marks none (OSC 133).
  void showPrompt(PromptDirection direction);
  /// Selects what the last command has printed, or, if scrolled back, the command at the top of the view; false if
  /// there is none.
  bool selectCommandOutput();
  /// The last command line that was run, on one line; empty if there is none, or the shell marks none.
  QString lastCommand() const;
  /// Labels to open, copy and type what is in view; ends them if they are shown.
  HintMode& hints() { return *m_hints; }
  /// Moving through the text, selecting and copying by the keyboard.
  CopyMode& copyMode() { return *m_copyMode; }

  TextCanvas& canvas() override { return m_display->canvas(); }
  const HistoryText& text() const override { return *m_text; }
  void followText(bool followed) override;
  TextSnapshot excerpt() const override;
  std::unique_ptr<OutputStyles> outputStyles() const override;
  void takeMatch(TextRange match) override;
  bool takesMatches() const override { return m_copyMode->isOn(); }
  void whenShown(std::function<void()> shown) override { m_display->whenSettled(std::move(shown)); }
  void clear() override { m_display->clear(); }

 Q_SIGNALS:
  /// The program has set the title, to an empty one if it takes it back.
  void titleChanged(const QString& title);
  void bellRang();
  /// The program wants the user to be notified. Either may be empty.
  void notificationWanted(const QString& title, const QString& body);
  /// The shell's command has ended (OSC 133).
  void commandEnded(const zolt::vt::EndedCommand& command);
  /// The theme may be another one, or the settings are.
  void themeChanged();
  /// There is a new screen.
  void screenChanged();

 private:
  void applySettings();
  void updateText();

  EmulationSettingsStore& m_settings;
  TerminalController& m_terminal;
  std::unique_ptr<SystemScheme> m_scheme;
  std::unique_ptr<EmulationDisplay> m_display;
  std::unique_ptr<HintMode> m_hints;
  std::unique_ptr<CopyMode> m_copyMode;
  std::unique_ptr<CopyModeBar> m_copyModeBar;
  std::unique_ptr<vt::ScrollbackText> m_text;
  bool m_isFollowed = false;
  bool m_isAlternate = false;  // m_text
};

}  // namespace zolt
