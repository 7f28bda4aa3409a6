#include "platform/DescriptorMonitor.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "base/Fatal.h"
#include "platform/Pipe.h"

namespace zolt {

DescriptorMonitor::Watch::Watch(std::shared_ptr<const Descriptor> descriptor, short events, Handler handler)
    : m_descriptor(std::move(descriptor)), m_events(events), m_handler(std::move(handler)) {}

DescriptorMonitor::DescriptorMonitor() {
  auto pipe = makePipe();
  precondition(static_cast<bool>(pipe), "no pipe for the descriptor monitor");
  m_wakeReader = std::move(pipe.value().reader);
  m_wakeWriter = std::move(pipe.value().writer);
  fcntl(m_wakeReader.get(), F_SETFL, O_NONBLOCK);
  fcntl(m_wakeWriter.get(), F_SETFL, O_NONBLOCK);
  m_thread = std::thread([this] { run(); });
}

DescriptorMonitor::~DescriptorMonitor() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
  }
  wake();
  m_thread.join();
}

DescriptorMonitor& DescriptorMonitor::shared() {
  static auto* monitor = new DescriptorMonitor;  // never destroyed: watches may outlive main()
  return *monitor;
}

std::shared_ptr<DescriptorMonitor::Watch> DescriptorMonitor::add(std::shared_ptr<const Descriptor> descriptor,
                                                                 short events, Handler handler) {
  auto watch = std::make_shared<Watch>(std::move(descriptor), events, std::move(handler));
  {
    const std::lock_guard lock(m_mutex);
    m_watches.push_back(watch);
  }
  wake();
  return watch;
}

void DescriptorMonitor::setEvents(const std::shared_ptr<Watch>& watch, short events) {
  {
    const std::lock_guard lock(m_mutex);
    if (watch->m_events == events) return;
    watch->m_events = events;
  }
  if (std::this_thread::get_id() != m_thread.get_id()) wake();
}

void DescriptorMonitor::cancel(const std::shared_ptr<Watch>& watch) {
  {
    const std::lock_guard lock(m_mutex);
    watch->m_cancelled = true;
    std::erase(m_watches, watch);
  }
  if (std::this_thread::get_id() == m_thread.get_id()) return;
  wake();
  const std::lock_guard finished(watch->m_running);
}

void DescriptorMonitor::wake() {
  const char byte = 0;
  // A full pipe means that a wake-up is already pending.
  [[maybe_unused]] const ssize_t written = write(m_wakeWriter.get(), &byte, 1);
}

void DescriptorMonitor::run() {
  std::vector<std::shared_ptr<Watch>> polled;
  std::vector<pollfd> descriptors;
  while (true) {
    polled.clear();
    descriptors.assign(1, {.fd = m_wakeReader.get(), .events = POLLIN, .revents = 0});
    {
      const std::lock_guard lock(m_mutex);
      if (m_stopping) return;
      for (const auto& watch : m_watches) {
        // Even with no events requested, poll would report a hang-up again and again.
        if (watch->m_events == 0) continue;
        polled.push_back(watch);
        descriptors.push_back({.fd = watch->m_descriptor->get(), .events = watch->m_events, .revents = 0});
      }
    }
    if (poll(descriptors.data(), static_cast<nfds_t>(descriptors.size()), -1) < 0) {
      precondition(errno == EINTR || errno == EAGAIN, "waiting for descriptors failed");
      continue;
    }
    if (descriptors[0].revents != 0) {
      std::array<char, 256> drained;
      while (read(m_wakeReader.get(), drained.data(), drained.size()) > 0) {
      }
    }
    for (std::size_t i = 0; i < polled.size(); ++i) {
      const short happened = descriptors[i + 1].revents;
      if (happened == 0) continue;
      const std::lock_guard running(polled[i]->m_running);
      {
        const std::lock_guard lock(m_mutex);
        if (polled[i]->m_cancelled) continue;
      }
      polled[i]->m_handler(happened);
    }
  }
}

}  // namespace zolt
