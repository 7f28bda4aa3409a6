#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

#include "history/OutputWriter.h"
#include "history/TextSnapshot.h"
#include "platform/Clock.h"
#include "platform/WorkerQueue.h"

namespace zolt {

/// Whether a saved file keeps the text's colours and attributes, as SGR sequences.
enum class OutputFormat { PlainText, WithColours };

/// Saves a terminal's output to a file, in the background and one block at a time.
///
/// The file is created, or replaces an existing one, only when it is complete. Saving begins at once. Emits either
/// `finished` or `failed`, or neither if it was cancelled, and always `ended` last. Main thread.
class OutputSaver : public QObject {
  Q_OBJECT

 public:
  /// The time between two progress signals.
  static constexpr std::chrono::milliseconds progressInterval{50};

  /// Saves a log.
  OutputSaver(TextSnapshot text, OutputFormat format, const QString& file, QObject* parent = nullptr,
              WorkerQueue& queue = WorkerQueue::utility(), Clock& clock = Clock::steady());
  /// Saves any text with `styles`, which is used in the background, or without if that is null.
  OutputSaver(TextSnapshot text, std::unique_ptr<OutputStyles> styles, const QString& file, QObject* parent = nullptr,
              WorkerQueue& queue = WorkerQueue::utility(), Clock& clock = Clock::steady());
  /// Cancels, and waits a moment so that no temporary file is left behind.
  ~OutputSaver() override;

  /// Cancels. A file that is already being moved into place is still completed, and `finished` is then emitted.
  void cancel();
  /// The value last emitted.
  double progress() const { return m_told; }

 Q_SIGNALS:
  /// The part that has been written, from 0 to 1.
  void progressed(double share);
  void finished();
  /// `reason` is a sentence.
  void failed(const QString& reason);
  /// The background work is over: deleting the saver no longer waits.
  void ended();

 private:
  struct Work;

  OutputSaver(TextSnapshot text, OutputWriter writer, const QString& file, QObject* parent, WorkerQueue& queue,
              Clock& clock);
  void tellProgress();
  void end(int error);

  std::shared_ptr<Work> m_work;
  QString m_file;
  std::unique_ptr<Timer> m_progress;
  double m_told = 0;
};

}  // namespace zolt
