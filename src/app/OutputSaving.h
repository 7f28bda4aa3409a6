#pragma once

#include <QDateTime>
#include <QFileDialog>
#include <QObject>
#include <QPointer>
#include <chrono>
#include <memory>

#include "platform/Clock.h"
#include "view/ContentView.h"
#include "view/saving/OutputSaver.h"
#include "view/saving/SavePanel.h"

namespace zolt {

/// "Zolt Output 2026-11-21 at 10.43.txt"
QString proposedOutputName(const QDateTime& time);

/// Saves the output of a window's terminal: asks for a file and a format, shows progress when saving takes a while, and
/// reports errors. Main thread.
class OutputSaving : public QObject {
  Q_OBJECT

 public:
  /// No progress is shown for a save that takes no longer than this.
  static constexpr std::chrono::milliseconds panelDelay{300};

  /// `content` and `clock` must outlive it.
  explicit OutputSaving(ContentView& content, Clock& clock = Clock::steady());
  ~OutputSaving() override;

  /// Opens the dialog or, while a save is in progress, moves the focus to its panel.
  void ask();
  /// Saves the output as it is now. One save at a time.
  void save(const QString& file, OutputFormat format);
  /// Cancels a save in progress and closes the dialog.
  void cancel();
  bool isSaving() const { return m_saver != nullptr; }

 private:
  void take(const QFileDialog& dialog);
  void showPanel();
  void end();
  void showError(const QString& reason);

  ContentView& m_content;
  Clock& m_clock;
  QPointer<QFileDialog> m_dialog;  // a child of the window, while it is open
  QPointer<OutputSaver> m_saver;   // a child until it has ended; null once cancelled
  QPointer<SavePanel> m_panel;     // a child of the terminal's container
  std::unique_ptr<Timer> m_panelTimer;
};

}  // namespace zolt
