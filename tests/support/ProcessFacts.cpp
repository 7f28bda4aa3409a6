#include "support/ProcessFacts.h"

#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zolt::test {

namespace {

// Fields 3 and 4 of /proc/PID/stat: the state, and the parent. The name before them may contain anything, so they begin
// after the last ')'.
bool readStat(const std::string& pid, char& state, pid_t& parent) {
  const std::string content = fileContent("/proc/" + pid + "/stat");
  const std::size_t nameEnd = content.rfind(')');
  if (nameEnd == std::string::npos) return false;
  std::istringstream rest(content.substr(nameEnd + 1));
  rest >> state >> parent;
  return !rest.fail();
}

std::vector<pid_t> childrenOf(pid_t wanted, bool zombiesOnly) {
  std::vector<pid_t> found;
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
    const std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    char state = '?';
    pid_t parent = 0;
    if (!readStat(name, state, parent) || parent != wanted) continue;
    if (!zombiesOnly || state == 'Z') found.push_back(static_cast<pid_t>(std::stol(name)));
  }
  return found;
}

}  // namespace

bool processExists(pid_t pid) {
  return kill(pid, 0) == 0;
}

bool processRuns(pid_t pid) {
  char state = 'Z';
  pid_t parent = 0;
  return readStat(std::to_string(pid), state, parent) && state != 'Z' && state != 'X';
}

std::vector<pid_t> childProcesses() {
  return childrenOf(getpid(), false);
}

std::vector<pid_t> childProcesses(pid_t parent) {
  return childrenOf(parent, false);
}

std::vector<pid_t> zombies() {
  return childrenOf(getpid(), true);
}

std::string programName(pid_t pid) {
  std::string name = fileContent("/proc/" + std::to_string(pid) + "/comm");
  if (name.ends_with('\n')) name.pop_back();
  return name;
}

std::size_t openDescriptors() {
  std::size_t count = 0;
  std::error_code ignored;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", ignored)) {
    ++count;
  }
  return count;
}

std::string fileContent(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

}  // namespace zolt::test
