#include "app/SingleInstance.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>
#include <thread>

#include "messages/Answer.h"
#include "platform/LocalConnection.h"

namespace zolt {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kAnswerLimit{5};
constexpr std::chrono::milliseconds kRetry{20};
constexpr std::string_view kAnswer = "opened\n";

std::string environmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// Identifies the display: starts with the same name share an instance. ":0" and its first screen ":0.0" are one
// display.
std::string displayName() {
  std::string x11 = environmentValue("DISPLAY");
  if (x11.ends_with(".0")) x11.resize(x11.size() - 2);
  std::string name = environmentValue("QT_QPA_PLATFORM") + "-" + environmentValue("WAYLAND_DISPLAY") + "-" + x11;
  std::ranges::replace_if(
      name, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

bool isOwnPrivateFolder(const std::string& path) {
  struct stat folder {};
  return lstat(path.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode) && folder.st_uid == getuid() &&
         (folder.st_mode & 0077) == 0;
}

struct DisplayName {
  Display display;
  std::string_view name;
};
constexpr std::array kDisplayNames{DisplayName{Display::Log, "log"}, DisplayName{Display::FullEmulation, "full"}};

std::string_view nameOf(Display display) {
  return std::ranges::find(kDisplayNames, display, &DisplayName::display)->name;
}

// An instance of another version may know displays that this one does not.
std::optional<Display> displayNamed(std::string_view name) {
  const auto* found = std::ranges::find(kDisplayNames, name, &DisplayName::name);
  return found == kDisplayNames.end() ? std::nullopt : std::optional(found->display);
}

}  // namespace

std::string OpenRequest::encoded() const {
  nlohmann::json request{{"open", "window"}, {"directory", workingDirectory}, {"token", activationToken}};
  if (display) request["display"] = nameOf(*display);
  return request.dump(-1, ' ', true, nlohmann::json::error_handler_t::replace) + "\n";
}

std::optional<OpenRequest> OpenRequest::decoded(std::string_view text) {
  const auto request = nlohmann::json::parse(text, nullptr, false);
  if (!request.is_object() || request.value("open", nlohmann::json()) != "window") return std::nullopt;
  OpenRequest result;
  if (const auto directory = request.find("directory"); directory != request.end() && directory->is_string()) {
    result.workingDirectory = directory->get<std::string>();
  }
  if (const auto token = request.find("token"); token != request.end() && token->is_string()) {
    result.activationToken = token->get<std::string>();
  }
  if (const auto display = request.find("display"); display != request.end() && display->is_string()) {
    result.display = displayNamed(display->get<std::string>());
  }
  return result;
}

std::string SingleInstance::defaultRuntimeFolder() {
  std::string folder = environmentValue("XDG_RUNTIME_DIR");
  if (folder.empty()) {
    std::error_code ignored;
    folder = "/tmp/zolt-" + std::to_string(getuid());
    mkdir(folder.c_str(), 0700);
  }
  return isOwnPrivateFolder(folder) ? folder : "";
}

SingleInstance::SingleInstance(const std::string& runtimeFolder) {
  const std::string base = runtimeFolder + "/zolt" + displayName();
  const bool fits = base.size() + std::strlen(".socket") < sizeof sockaddr_un::sun_path;
  if (runtimeFolder.empty() || !fits) return;
  m_lockPath = base + ".lock";
  m_socketPath = base + ".socket";
}

SingleInstance::~SingleInstance() {
  if (!m_lock) return;
  m_server.reset();  // removes the socket
  unlink(m_lockPath.c_str());
}

SingleInstance::Lock SingleInstance::takeLock() {
  while (true) {
    Descriptor lock(open(m_lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (!lock) return Lock::Impossible;
    if (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) return errno == EWOULDBLOCK ? Lock::Held : Lock::Impossible;
    // An instance that was just quitting may have unlinked the file between our open and lock: then the lock is on a
    // deleted file.
    struct stat locked {};
    struct stat named {};
    fstat(lock.get(), &locked);
    if (stat(m_lockPath.c_str(), &named) == 0 && named.st_ino == locked.st_ino && named.st_dev == locked.st_dev) {
      m_lock = std::move(lock);
      return Lock::Taken;
    }
  }
}

bool SingleInstance::forward(const OpenRequest& request) const {
  LocalConnection connection(Clock::now() + kAnswerLimit);
  return connection.connect(m_socketPath) == LocalConnection::Outcome::Connected &&
         connection.send(request.encoded()) && connection.readLine(kAnswer.size()) == kAnswer;
}

SingleInstance::Outcome SingleInstance::claim(const OpenRequest& request) {
  if (m_lockPath.empty()) return Outcome::Unshared;
  const auto deadline = Clock::now() + kAnswerLimit;
  // An instance does not answer in the moment between taking the lock and listening, nor between closing the socket and
  // releasing the lock.
  while (Clock::now() < deadline) {
    const Lock lock = takeLock();
    if (lock == Lock::Taken) return Outcome::First;
    if (lock == Lock::Impossible) return Outcome::Unshared;
    if (forward(request)) return Outcome::Forwarded;
    std::this_thread::sleep_for(kRetry);
  }
  return Outcome::Unshared;
}

bool SingleInstance::serve(std::function<void(const OpenRequest& request)> open, AnswerMessage answerMessage) {
  const auto answer = [open = std::move(open),
                       answerMessage = std::move(answerMessage)](std::string_view line) -> RequestServer::Answer {
    // A client that gave up waiting has opened its own window by now.
    if (const auto request = OpenRequest::decoded(line)) {
      return {.line = std::string(kAnswer), .whenSent = [open, request] { open(*request); }};
    }
    const auto message = Message::decoded(line);
    return {.line = message ? answerMessage(message.value()) : answerRefused(message.reason())};
  };
  m_server =
      std::make_unique<RequestServer>(answer, answerRefused, RequestServer::Limits{.requestBytes = kRequestLimitBytes});
  if (m_server->listen(m_socketPath)) return true;
  m_server.reset();
  unlink(m_lockPath.c_str());
  m_lock.reset();
  return false;
}

}  // namespace zolt
