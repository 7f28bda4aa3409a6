#include "view/saving/OutputSaver.h"

#include <unistd.h>

#include <QFile>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <utility>

#include "emulation/SGREncoder.h"
#include "platform/MainQueue.h"
#include "platform/ReplacementFile.h"
#include "view/saving/SaveErrorText.h"

namespace zolt {

namespace {

// The file is synced each time this many bytes have been written, so that the final sync, and the wait for a cancelled
// save, are short.
constexpr std::size_t kSyncBytes = std::size_t{8} << 20;
// How long the destructor waits for a slow disk.
constexpr std::chrono::seconds kEndLimit{2};

std::uint64_t sizeOf(const TextSnapshot& text) {
  return text.summary(text.endBlock() - 1).end() - text.summary(text.firstBlock()).start;
}

}  // namespace

// Shared by the two threads.
struct OutputSaver::Work {
  enum class Stage { Writing, Replacing, Cancelled };

  Work(TextSnapshot snapshot, OutputWriter output, std::string path)
      : text(std::move(snapshot)), writer(std::move(output)), target(std::move(path)) {}

  const TextSnapshot text;
  OutputWriter writer;  // for the background thread
  const std::string target;
  std::atomic<Stage> stage = Stage::Writing;
  std::atomic<std::uint64_t> written = 0;  // bytes of the text

  std::mutex mutex;
  std::condition_variable changed;
  std::string temporaryFile;  // once there is one
  bool isRunning = false;

  // Leaves the stage Writing for `next`; false when the other thread has left it already.
  bool enter(Stage next) {
    Stage expected = Stage::Writing;
    return stage.compare_exchange_strong(expected, next);
  }

  int run() {
    {
      const std::lock_guard lock(mutex);
      if (stage != Stage::Writing) return 0;
      isRunning = true;
    }
    const int error = save();
    const std::lock_guard lock(mutex);
    isRunning = false;
    changed.notify_all();
    return error;
  }

  int save() {
    ReplacementFile file(target);
    {
      const std::lock_guard lock(mutex);
      temporaryFile = file.temporaryPath();
    }
    writeTo(file);
    if (stage == Stage::Writing) file.sync();
    if (file.error() == 0 && enter(Stage::Replacing)) file.replace();
    return file.error();
  }

  void writeTo(ReplacementFile& file) {
    std::string bytes;
    std::size_t unsynced = 0;
    for (std::size_t i = text.firstBlock(); i < text.endBlock(); ++i) {
      if (stage != Stage::Writing || file.error() != 0) return;
      bytes.clear();
      writer.append(text, i, bytes);
      file.write(bytes);
      unsynced += bytes.size();
      if (unsynced >= kSyncBytes) {
        file.sync();
        unsynced = 0;
      }
      written = text.summary(i).end() - text.summary(text.firstBlock()).start;
    }
    bytes.clear();
    writer.finish(bytes);
    file.write(bytes);
  }

  void waitForEnd() {
    std::unique_lock lock(mutex);
    if (changed.wait_for(lock, kEndLimit, [this] { return !isRunning; })) return;
    if (!temporaryFile.empty()) unlink(temporaryFile.c_str());
  }
};

OutputSaver::OutputSaver(TextSnapshot text, OutputFormat format, const QString& file, QObject* parent,
                         WorkerQueue& queue, Clock& clock)
    : OutputSaver(std::move(text), format == OutputFormat::WithColours ? OutputWriter(appendSGR) : OutputWriter(), file,
                  parent, queue, clock) {}

OutputSaver::OutputSaver(TextSnapshot text, std::unique_ptr<OutputStyles> styles, const QString& file, QObject* parent,
                         WorkerQueue& queue, Clock& clock)
    : OutputSaver(std::move(text), OutputWriter(std::move(styles)), file, parent, queue, clock) {}

OutputSaver::OutputSaver(TextSnapshot text, OutputWriter writer, const QString& file, QObject* parent,
                         WorkerQueue& queue, Clock& clock)
    : QObject(parent),
      m_work(std::make_shared<Work>(std::move(text), std::move(writer), QFile::encodeName(file).toStdString())),
      m_file(file),
      m_progress(clock.makeTimer([this] { tellProgress(); })) {
  m_progress->start(progressInterval);
  queue.async([this, owner = MainQueue::Owner(this), work = m_work] {
    const int error = work->run();
    MainQueue::async(owner, [this, error] { end(error); });
  });
}

OutputSaver::~OutputSaver() {
  cancel();
  m_work->waitForEnd();
}

void OutputSaver::cancel() {
  if (m_work->enter(Work::Stage::Cancelled)) m_progress->stop();
}

void OutputSaver::tellProgress() {
  m_progress->start(progressInterval);
  const std::uint64_t all = sizeOf(m_work->text);
  const double share = all == 0 ? 1 : static_cast<double>(m_work->written) / static_cast<double>(all);
  if (share != std::exchange(m_told, share)) Q_EMIT progressed(share);
}

void OutputSaver::end(int error) {
  m_progress->stop();
  const bool wanted = m_work->stage != Work::Stage::Cancelled;
  if (wanted && error == 0) Q_EMIT finished();
  if (wanted && error != 0) Q_EMIT failed(saveErrorText(error, m_file));
  Q_EMIT ended();
}

}  // namespace zolt
