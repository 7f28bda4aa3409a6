#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <memory>

#include "history/TextSnapshot.h"
#include "platform/WorkerQueue.h"
#include "view/Clock.h"

namespace zolt {

/// What a saved file says of how the text looked: nothing, or all that SGR sequences can say.
enum class OutputFormat { PlainText, WithColours };

/// Saves a terminal's output to a file, in the background and a block at a time.
///
/// The file appears, or takes the place of the one of its name, when it is complete; until then that is as it was.
/// Begins at once. Emits one of `finished` and `failed`, neither once it is cancelled, and last of all `ended`. Main
/// thread.
class OutputSaver : public QObject {
  Q_OBJECT

 public:
  /// Between two signals of progress.
  static constexpr std::chrono::milliseconds progressInterval{50};

  OutputSaver(TextSnapshot text, OutputFormat format, const QString& file, QObject* parent = nullptr,
              WorkerQueue& queue = WorkerQueue::utility(), Clock& clock = Clock::steady());
  /// Cancels it, and waits a moment so that no temporary file is left.
  ~OutputSaver() override;

  /// Ends it. Only a file that is just being given its name gets it nevertheless, and then `finished` is emitted.
  void cancel();
  /// As the last signal of it said.
  double progress() const { return m_told; }

 Q_SIGNALS:
  /// How much is written, from 0 to 1.
  void progressed(double share);
  void finished();
  /// `reason` is a sentence.
  void failed(const QString& reason);
  /// The background is done with it: to delete it does not wait.
  void ended();

 private:
  struct Work;

  void tellProgress();
  void end(int error);

  std::shared_ptr<Work> m_work;
  QString m_file;
  std::unique_ptr<Timer> m_progress;
  double m_told = 0;
};

}  // namespace zolt
