#include "terminal/Emulator.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zolt {

namespace {

// Joins what happened later to what happened before, within the bounds that the engine keeps.
void join(vt::TerminalEvents& events, vt::TerminalEvents&& later) {
  events.bells += later.bells;
  for (vt::ClipboardWrite& write : later.clipboardWrites) {
    std::erase_if(events.clipboardWrites, [&](const vt::ClipboardWrite& each) { return each.target == write.target; });
    events.clipboardWrites.push_back(std::move(write));
  }
  for (const vt::ClipboardTarget target : later.clipboardReads) {
    if (events.clipboardReads.size() < vt::TerminalEvents::maxNotifications) events.clipboardReads.push_back(target);
  }
  for (vt::Notification& notification : later.notifications) {
    if (events.notifications.size() < vt::TerminalEvents::maxNotifications) {
      events.notifications.push_back(std::move(notification));
    }
  }
  for (const vt::EndedCommand& command : later.endedCommands) {
    if (events.endedCommands.size() < vt::TerminalEvents::maxNotifications) events.endedCommands.push_back(command);
  }
  for (const vt::WindowRequest& request : later.windowRequests) {
    if (events.windowRequests.size() < vt::TerminalEvents::maxNotifications) events.windowRequests.push_back(request);
  }
  events.titleChanged = events.titleChanged || later.titleChanged;
  events.paletteChanged = events.paletteChanged || later.paletteChanged;
}

}  // namespace

Emulator::Emulator(const TerminalSize& size, vt::TerminalSettings settings, Handlers handlers)
    : Emulator(std::make_unique<vt::Terminal>(size, std::move(settings)), std::move(handlers)) {}

Emulator::Emulator(std::unique_ptr<vt::Terminal> terminal, Handlers handlers)
    : m_handlers(std::move(handlers)), m_terminal(std::move(terminal)), m_thread([this] { run(); }) {}

Emulator::~Emulator() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
  }
  m_woken.notify_one();
  m_thread.join();
}

void Emulator::feed(Bytes bytes) {
  m_bytesFed += bytes.size();
  std::unique_lock lock(m_mutex);
  const bool isIdle = m_queue.empty() && !m_busy && !m_stopping;
  if (!isIdle || bytes.size() > processedAtOnceBytes) {
    m_queue.emplace_back(std::move(bytes));
    lock.unlock();
    m_woken.notify_one();
    return;
  }
  m_busy = true;
  lock.unlock();
  Work work(std::move(bytes));
  process(work);
  lock.lock();
  m_busy = false;
  const bool isDone = m_queue.empty() && !m_stopping && !(m_changed && m_wanted);
  lock.unlock();
  if (!isDone) m_woken.notify_one();
}

void Emulator::change(Change change) {
  {
    const std::lock_guard lock(m_mutex);
    m_queue.emplace_back(std::move(change));
  }
  m_woken.notify_one();
}

Emulator::Update Emulator::take() {
  Update update;
  bool isLate = false;
  {
    const std::lock_guard lock(m_mutex);
    update.snapshot = std::exchange(m_latest, nullptr);
    update.events = std::exchange(m_events, {});
    if (update.snapshot) m_wanted = true;
    isLate = m_wanted && m_changed;
  }
  if (isLate) m_woken.notify_one();
  return update;
}

bool Emulator::isSettled() const {
  const std::lock_guard lock(m_mutex);
  return m_queue.empty() && !m_busy && !m_changed && m_latest == nullptr;
}

std::chrono::milliseconds Emulator::now() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

void Emulator::run() {
  std::vector<Work> work;
  std::unique_lock lock(m_mutex);
  while (true) {
    m_woken.wait(lock, [this] { return m_stopping || (!m_busy && (!m_queue.empty() || (m_changed && m_wanted))); });
    if (m_stopping) return;
    work.swap(m_queue);
    m_busy = true;
    lock.unlock();
    for (Work& each : work) {
      if (!process(each)) break;
    }
    work.clear();
    publish();
    lock.lock();
    m_busy = false;
    // A synchronized update holds the frame, but no longer than it may.
    if (m_changed && m_wanted && m_queue.empty() && !m_stopping) {
      m_woken.wait_for(lock, vt::Terminal::maxUpdate / 8, [this] { return m_stopping || !m_queue.empty(); });
    }
  }
}

// False: it is time to stop.
bool Emulator::process(Work& work) {
  if (const Bytes* bytes = std::get_if<Bytes>(&work)) {
    m_terminal->feed(bytes->view(), now());
  } else {
    std::get<Change>(work)(*m_terminal);
  }
  work = Bytes();  // gives the bytes back to the reader's count
  if (std::string replies = m_terminal->takeReplies(); !replies.empty()) m_handlers.replied(std::move(replies));
  {
    const std::lock_guard lock(m_mutex);
    m_changed = true;
    if (m_stopping) return false;
  }
  publish();
  return true;
}

// Makes a snapshot if there is something new to show, somebody to look at it, and no update in the middle of which it
// would be.
void Emulator::publish() {
  {
    const std::lock_guard lock(m_mutex);
    if (!m_changed || !m_wanted || m_stopping) return;
  }
  if (m_terminal->holdsFrame(now())) return;
  std::shared_ptr<const vt::ScreenSnapshot> snapshot = m_terminal->snapshot();
  vt::TerminalEvents events = m_terminal->takeEvents();
  {
    const std::lock_guard lock(m_mutex);
    m_latest = std::move(snapshot);
    join(m_events, std::move(events));
    m_changed = false;
    m_wanted = false;
  }
  m_handlers.changed();
}

}  // namespace zolt
