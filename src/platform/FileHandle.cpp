#include "platform/FileHandle.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <mutex>
#include <utility>

#include "platform/DescriptorMonitor.h"
#include "platform/Pipe.h"

namespace zolt {

Bytes::Bytes(std::string content) : m_content(std::make_shared<const std::string>(std::move(content))) {}

struct FileHandle::State {
  State(Descriptor&& owned, DescriptorMonitor& watcher)
      : descriptor(std::make_shared<const Descriptor>(std::move(owned))), monitor(watcher) {}

  std::shared_ptr<const Descriptor> descriptor;
  DescriptorMonitor& monitor;
  std::shared_ptr<DescriptorMonitor::Watch> watch;

  // Held while the readability handler runs: while it is free, no bytes are on their way from the descriptor to the
  // receiver.
  std::mutex handing;
  ReadabilityHandler readabilityHandler;  // guarded by handing

  std::mutex mutex;  // guards everything below
  bool reading = false;
  bool ended = false;
  bool full = false;
  std::size_t inFlight = 0;
  std::string pending;  // to be written, from pendingFrom on
  std::size_t pendingFrom = 0;
  WriteFailureHandler writeFailureHandler;

  bool isWaitingToRead() {
    const std::lock_guard lock(mutex);
    return reading && !ended && !full;
  }

  // With the mutex held.
  void updateEvents() {
    short events = 0;
    if (reading && !ended && !full) events |= POLLIN;
    if (!pending.empty()) events |= POLLOUT;
    monitor.setEvents(watch, events);
  }

  void take(std::size_t bytes) {
    const std::lock_guard lock(mutex);
    inFlight += bytes;
    if (inFlight < inFlightLimitBytes || full) return;
    full = true;
    updateEvents();
  }

  void release(std::size_t bytes) {
    const std::lock_guard lock(mutex);
    inFlight -= bytes;
    if (!full || inFlight > inFlightLimitBytes / 2) return;
    full = false;
    updateEvents();
  }

  // Writes as much of `pending` as the system accepts. Returns the error number of a failure, or 0. With the mutex
  // held.
  int flush() {
    while (pendingFrom < pending.size()) {
      const ssize_t written = ::write(descriptor->get(), pending.data() + pendingFrom, pending.size() - pendingFrom);
      if (written >= 0) {
        pendingFrom += static_cast<std::size_t>(written);
      } else if (errno == EAGAIN || errno == EWOULDBLOCK) {
        break;
      } else if (errno != EINTR) {
        const int failure = errno;
        pending.clear();
        pendingFrom = 0;
        return failure;
      }
    }
    if (pendingFrom == pending.size()) {
      pending.clear();
      pendingFrom = 0;
    } else if (pendingFrom > pending.size() / 2) {
      pending.erase(0, pendingFrom);
      pendingFrom = 0;
    }
    return 0;
  }

  void handleWritable(short happened) {
    WriteFailureHandler report;
    int failure = 0;
    {
      const std::lock_guard lock(mutex);
      failure = flush();
      if (!pending.empty() && (happened & POLLOUT) == 0) {
        // A terminal that hangs up while its buffer is full accepts nothing more and never reports an error.
        failure = EIO;
        pending.clear();
        pendingFrom = 0;
      }
      if (failure != 0) report = writeFailureHandler;
      updateEvents();
    }
    if (report) report(errorText(failure));
  }
};

FileHandle::FileHandle(Descriptor descriptor) : FileHandle(std::move(descriptor), DescriptorMonitor::shared()) {}

FileHandle::FileHandle(Descriptor descriptor, DescriptorMonitor& monitor)
    : m_state(std::make_shared<State>(std::move(descriptor), monitor)) {
  ignoreBrokenPipes();
  const int fd = m_state->descriptor->get();
  fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
  m_state->watch = monitor.add(m_state->descriptor, 0, [this, state = m_state.get()](short happened) {
    // If the other end is full, poll reports only POLLHUP or POLLERR; try to write to find the error.
    if ((happened & (POLLOUT | POLLHUP | POLLERR)) != 0) state->handleWritable(happened);
    if ((happened & (POLLIN | POLLHUP | POLLERR)) == 0) return;
    const std::lock_guard handing(state->handing);
    if (state->isWaitingToRead()) state->readabilityHandler(*this);
  });
}

FileHandle::~FileHandle() {
  m_state->monitor.cancel(m_state->watch);
}

int FileHandle::descriptor() const {
  return m_state->descriptor->get();
}

void FileHandle::setReadabilityHandler(ReadabilityHandler handler) {
  const std::lock_guard handing(m_state->handing);
  m_state->readabilityHandler = std::move(handler);
  const std::lock_guard lock(m_state->mutex);
  m_state->reading = static_cast<bool>(m_state->readabilityHandler);
  m_state->updateEvents();
}

Bytes FileHandle::availableData() {
  static thread_local const auto scratch = std::make_unique<std::array<char, readLimitBytes>>();
  std::size_t size = 0;
  bool ended = false;
  // A pseudo-terminal returns at most a page per read, whatever the buffer: read until there is nothing more.
  while (size < readLimitBytes) {
    const ssize_t got = read(m_state->descriptor->get(), scratch->data() + size, readLimitBytes - size);
    if (got > 0) {
      size += static_cast<std::size_t>(got);
    } else if (got < 0 && errno == EINTR) {
      continue;
    } else {
      // The master of a pseudo-terminal reports EIO instead of end of file.
      ended = got == 0 || (errno != EAGAIN && errno != EWOULDBLOCK);
      break;
    }
  }
  if (ended && size == 0) {
    const std::lock_guard lock(m_state->mutex);
    m_state->ended = true;
    m_state->updateEvents();
  }
  if (size == 0) return {};
  m_state->take(size);
  struct Counted {
    std::string content;
    std::weak_ptr<State> source;
    ~Counted() {
      if (const auto state = source.lock()) state->release(content.size());
    }
  };
  const auto counted = std::make_shared<Counted>();
  counted->content.assign(scratch->data(), size);
  counted->source = m_state;
  return Bytes(std::shared_ptr<const std::string>(counted, &counted->content));
}

bool FileHandle::isDrained() const {
  const std::lock_guard handing(m_state->handing);
  pollfd waiting{.fd = m_state->descriptor->get(), .events = POLLIN, .revents = 0};
  return poll(&waiting, 1, 0) <= 0 || (waiting.revents & POLLIN) == 0;
}

Result<void> FileHandle::write(std::string_view data) {
  const std::lock_guard lock(m_state->mutex);
  const std::size_t waiting = m_state->pending.size() - m_state->pendingFrom;
  const std::string_view accepted = data.substr(0, writeLimitBytes - std::min(waiting, writeLimitBytes));
  m_state->pending += accepted;
  const int failure = m_state->flush();
  m_state->updateEvents();
  if (failure != 0) return Failure{errorText(failure)};
  if (accepted.size() < data.size()) return Failure{"too much is waiting to be written already"};
  return {};
}

void FileHandle::setWriteFailureHandler(WriteFailureHandler handler) {
  const std::lock_guard lock(m_state->mutex);
  m_state->writeFailureHandler = std::move(handler);
}

}  // namespace zolt
