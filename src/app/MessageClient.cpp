#include "app/MessageClient.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "app/MessageIdentity.h"
#include "app/SingleInstance.h"
#include "base/Diagnostics.h"
#include "messages/Answer.h"
#include "messages/MessageFields.h"
#include "messages/MessageLine.h"
#include "platform/LocalConnection.h"
#include "text/GraphemeClusters.h"

namespace zolt {

namespace {

enum Status { kDone = 0, kRefused = 1, kWrongUsage = 2, kNotRunning = 3 };

constexpr std::chrono::seconds kAnswerLimit{10};
constexpr std::size_t kAnswerLimitBytes = std::size_t{64} * 1024 * 1024;

int failed(Status status, const std::string& reason) {
  printErrorLine("zolt msg: " + reason);
  return status;
}

// An answer on behalf of an instance that gave none.
int refused(std::string_view reason) {
  std::fputs(answerRefused(reason).c_str(), stdout);
  return kRefused;
}

std::string valueOf(const char* variable) {
  const char* value = std::getenv(variable);
  return value == nullptr ? "" : value;
}

// As much as a request can hold; the next byte makes it too much.
std::string standardInput() {
  std::string text;
  std::array<char, 65536> buffer{};
  ssize_t got = 0;
  while (text.size() <= kRequestLimitBytes && (got = read(STDIN_FILENO, buffer.data(), buffer.size())) > 0) {
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return text;
}

// None if it is gone, or its name cannot be sent.
std::string currentFolder() {
  std::error_code ignored;
  const std::string folder = std::filesystem::current_path(ignored).string();
  return isValidUtf8(folder) ? folder : "";
}

std::string absolute(const std::string& folder) {
  std::error_code failure;
  const std::filesystem::path path = std::filesystem::absolute(folder, failure);
  return failure ? folder : path.lexically_normal().string();
}

// What depends on where and by whom the command was started.
void fillIn(MessageLine& line) {
  Message& message = line.message;
  const auto takes = [&message](auto member) {
    const auto isOf = [member](const FieldRow& row) { return row.member == FieldRow::Member(member); };
    return std::ranges::find_if(fieldRows(), isOf)->verbs.contains(message.verb);
  };
  const bool namesPlace = !message.terminal.empty() || !message.window.empty();
  if (line.readsText) message.text = standardInput();
  if (takes(&Message::workingDirectory)) {
    const std::string& folder = message.workingDirectory;
    message.workingDirectory = folder.empty() ? currentFolder() : absolute(folder);
  }
  if (takes(&Message::token) && message.token.empty()) message.token = valueOf("ZOLT_TOKEN");
  if (takes(&Message::activationToken)) message.activationToken = valueOf("XDG_ACTIVATION_TOKEN");
  // A text is never typed into whatever terminal this happens to be.
  if (takes(&Message::terminal) && !namesPlace && message.verb != Verb::SendText) {
    message.terminal = valueOf(kTerminalVariable);
  }
}

}  // namespace

int runMessage(const std::vector<std::string>& arguments) {
  auto parsed = MessageLine::parse(arguments);
  if (!parsed) return failed(kWrongUsage, parsed.reason());
  MessageLine& line = parsed.value();
  if (line.wantsHelp) {
    std::fputs(MessageLine::helpText().c_str(), stdout);
    return kDone;
  }
  fillIn(line);
  if (const auto fine = checked(line.message); !fine) return failed(kWrongUsage, fine.reason());
  const std::string request = line.message.encoded();
  if (request.size() > kRequestLimitBytes) return failed(kWrongUsage, "the request is larger than 1 MiB");

  const SingleInstance instance(SingleInstance::defaultRuntimeFolder());
  LocalConnection connection(std::chrono::steady_clock::now() + kAnswerLimit);
  switch (connection.connect(instance.socketPath())) {
    case LocalConnection::Outcome::Connected:
      break;
    case LocalConnection::Outcome::NobodyListens:
      return failed(kNotRunning, "Zolt is not running on this display; start it first");
    case LocalConnection::Outcome::Failed:
      return refused("Zolt cannot be reached");
  }
  const bool isSent = connection.send(request);
  const auto answer = isSent ? connection.readLine(kAnswerLimitBytes) : std::nullopt;
  const auto done = answer ? isDone(*answer) : std::nullopt;
  if (!done) return refused("Zolt did not answer: it is busy, or of a version that does not understand the request");
  std::fputs(answer->c_str(), stdout);
  return *done ? kDone : kRefused;
}

}  // namespace zolt
