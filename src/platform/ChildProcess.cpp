#include "platform/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <thread>
#include <utility>

#include "platform/LaunchLock.h"
#include "platform/MainQueue.h"
#include "platform/Pipe.h"

// In two steps: without __GLIBC_PREREQ even `defined(...) && __GLIBC_PREREQ(...)` does not preprocess.
#ifdef __GLIBC__
#if __GLIBC_PREREQ(2, 34)
#define ZOLT_HAS_SPAWN_CLOSEFROM
#endif
#endif

namespace zolt {

struct ChildProcess::State {
  Request request;
  TerminationHandler handler;  // not changed once the child is running

  std::mutex mutex;  // guards everything below
  pid_t pid = 0;
  bool running = false;
  bool keepsGroup = false;  // not reaped, so its PID and group ID are not reused
  int status = 0;
  Reason reason = Reason::Exit;
  std::condition_variable ended;

  void send(int signal) {
    const std::lock_guard lock(mutex);
    // Reaping takes the same lock, so the PID cannot have been reused.
    if (running) kill(pid, signal);
  }

  void sendToGroup(int signal) {
    const std::lock_guard lock(mutex);
    if (!running && !keepsGroup) return;
    // A child that has not yet created its group is signalled alone.
    if (!leadsGroup() || kill(-pid, signal) != 0) kill(pid, signal);
  }

  bool leadsGroup() const { return request.terminal == Terminal::Controlling || request.group == kOwnGroup; }

  void waitUntilExit() {
    std::unique_lock lock(mutex);
    ended.wait(lock, [this] { return !running; });
  }

  bool waitUntilExit(std::chrono::milliseconds longest) {
    std::unique_lock lock(mutex);
    return ended.wait_for(lock, longest, [this] { return !running; });
  }

  void reap() const {
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
  }

  void release() {
    const std::lock_guard lock(mutex);
    if (!std::exchange(keepsGroup, false) || running) return;
    reap();
  }

  bool isRunning() {
    const std::lock_guard lock(mutex);
    return running;
  }

  // Waits on a thread of its own: the one way that works everywhere and reaps no one else's children.
  void waitForEnd() {
    siginfo_t info{};
    while (waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    {
      const std::lock_guard lock(mutex);
      if (!keepsGroup) reap();
      running = false;
      reason = info.si_code == CLD_EXITED ? Reason::Exit : Reason::Signal;
      status = info.si_status;
    }
    ended.notify_all();
    // Moved out first: the handler may hold the last reference to its owner.
    if (const TerminationHandler last = std::exchange(handler, nullptr)) last();
  }
};

namespace {

std::mutex remainingMutex;

// The actions and attributes of one spawn, freed together.
class SpawnPlan {
 public:
  SpawnPlan() {
    posix_spawn_file_actions_init(&m_actions);
    posix_spawnattr_init(&m_attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&m_attributes, &none);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigdefault(&m_attributes, &all);
  }
  ~SpawnPlan() {
    posix_spawn_file_actions_destroy(&m_actions);
    posix_spawnattr_destroy(&m_attributes);
  }
  SpawnPlan(const SpawnPlan&) = delete;
  SpawnPlan& operator=(const SpawnPlan&) = delete;

  void leadSession() { m_flags |= POSIX_SPAWN_SETSID; }
  void joinGroup(pid_t group) {
    posix_spawnattr_setpgroup(&m_attributes, group);
    m_flags |= POSIX_SPAWN_SETPGROUP;
  }
  // The first terminal that a session leader opens becomes its controlling terminal.
  void openAsStandardInput(const char* path) {
    posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, path, O_RDWR, 0);
  }
  void enter(const std::string& folder) { posix_spawn_file_actions_addchdir_np(&m_actions, folder.c_str()); }
  void duplicate(int from, int to) { posix_spawn_file_actions_adddup2(&m_actions, from, to); }
  void closeEverythingElse() {
#ifdef ZOLT_HAS_SPAWN_CLOSEFROM
    posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1);
#elif defined(POSIX_SPAWN_CLOEXEC_DEFAULT)
    m_flags |= POSIX_SPAWN_CLOEXEC_DEFAULT;
#endif
  }

  int spawn(pid_t* pid, const char* path, char* const* arguments, char* const* environment) {
    posix_spawnattr_setflags(&m_attributes, m_flags);
    return posix_spawn(pid, path, &m_actions, &m_attributes, arguments, environment);
  }

 private:
  posix_spawn_file_actions_t m_actions;
  posix_spawnattr_t m_attributes;
  short m_flags = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
};

// An ignored SIGCHLD is inherited; the system would then reap children by itself, and their statuses would be lost.
void keepStatusesOfChildren() {
  struct sigaction action {};
  if (sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN) std::signal(SIGCHLD, SIG_DFL);
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

// A descriptor below 3 would be overwritten while it is still needed: move it out of the way.
int outOfTheWay(int descriptor, Descriptor& owner) {
  if (descriptor < 0 || descriptor > STDERR_FILENO) return descriptor;
  owner = Descriptor(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  return owner.get();
}

}  // namespace

ChildProcess::ChildProcess(Request request) : m_state(std::make_shared<State>()) {
  m_state->request = std::move(request);
}

void ChildProcess::setTerminationHandler(TerminationHandler handler) {
  m_state->handler = std::move(handler);
}

Result<void> ChildProcess::launch() {
  const Request& request = m_state->request;
  std::vector<std::string> arguments{request.executable};
  arguments.insert(arguments.end(), request.arguments.begin(), request.arguments.end());
  std::vector<std::string> environment;
  for (const auto& [name, value] : request.environment) {
    environment.push_back(name + "=" + value);
  }

  std::array<Descriptor, 3> owners;
  const std::array streams{outOfTheWay(request.standardInput, owners[0]),
                           outOfTheWay(request.standardOutput, owners[1]),
                           outOfTheWay(request.standardError, owners[2])};
  SpawnPlan plan;
  std::array<char, 128> terminalName{};
  if (request.terminal == Terminal::Controlling) {
    const int failure = ttyname_r(streams[0], terminalName.data(), terminalName.size());
    if (failure != 0) return Failure{errorText(failure)};
    plan.leadSession();
    plan.openAsStandardInput(terminalName.data());
  } else if (request.group) {
    plan.joinGroup(*request.group);
  }
  for (int i = 0; i < 3; ++i) {
    if (streams[static_cast<std::size_t>(i)] >= 0) plan.duplicate(streams[static_cast<std::size_t>(i)], i);
  }
  plan.closeEverythingElse();
  if (!request.workingDirectory.empty()) plan.enter(request.workingDirectory);

  pid_t pid = 0;
  {
    const std::lock_guard lock(launchLock());
    keepStatusesOfChildren();
    const int failure =
        plan.spawn(&pid, request.executable.c_str(), pointersTo(arguments).data(), pointersTo(environment).data());
    if (failure != 0) return Failure{errorText(failure)};
  }
  {
    const std::lock_guard lock(m_state->mutex);
    m_state->pid = pid;
    m_state->running = true;
    m_state->keepsGroup = request.keepsGroup;
  }
  std::thread([state = m_state] { state->waitForEnd(); }).detach();
  return {};
}

pid_t ChildProcess::pid() const {
  const std::lock_guard lock(m_state->mutex);
  return m_state->pid;
}

bool ChildProcess::isRunning() const {
  return m_state->isRunning();
}

int ChildProcess::terminationStatus() const {
  const std::lock_guard lock(m_state->mutex);
  return m_state->status;
}

ChildProcess::Reason ChildProcess::terminationReason() const {
  const std::lock_guard lock(m_state->mutex);
  return m_state->reason;
}

void ChildProcess::terminate() {
  m_state->send(SIGTERM);
}

void ChildProcess::sendSignal(int signal) {
  m_state->send(signal);
}

void ChildProcess::sendSignalToGroup(int signal) {
  m_state->sendToGroup(signal);
}

void ChildProcess::waitUntilExit() {
  m_state->waitUntilExit();
}

bool ChildProcess::waitUntilExit(std::chrono::milliseconds longest) {
  return m_state->waitUntilExit(longest);
}

void ChildProcess::release() {
  m_state->release();
}

std::vector<std::weak_ptr<ChildProcess::State>>& ChildProcess::remaining() {
  static std::vector<std::weak_ptr<State>> states;
  return states;
}

void ChildProcess::killAfter(std::chrono::milliseconds grace) {
  if (!isRunning()) return;
  {
    const std::lock_guard lock(remainingMutex);
    std::erase_if(remaining(), [](const auto& each) { return each.expired(); });
    remaining().push_back(m_state);
  }
  MainQueue::after(grace, [state = m_state] { state->sendToGroup(SIGKILL); });
}

void ChildProcess::endRemaining(std::chrono::milliseconds grace) {
  std::vector<std::shared_ptr<State>> states;
  {
    const std::lock_guard lock(remainingMutex);
    for (const auto& each : remaining()) {
      if (auto state = each.lock()) states.push_back(std::move(state));
    }
  }
  const auto anyRuns = [&] {
    return std::ranges::any_of(states, [](const auto& state) { return state->isRunning(); });
  };
  const auto waitUntil = [&](std::chrono::steady_clock::time_point deadline) {
    while (anyRuns() && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  };
  waitUntil(std::chrono::steady_clock::now() + grace);
  for (const auto& state : states) {
    state->sendToGroup(SIGKILL);
  }
  waitUntil(std::chrono::steady_clock::now() + std::chrono::seconds(1));
}

}  // namespace zolt
