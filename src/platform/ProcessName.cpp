#include "platform/ProcessName.h"

#ifdef __APPLE__
#include <libproc.h>

#include <array>
#else
#include <fstream>
#include <iterator>
#endif

namespace zolt {

#ifdef __APPLE__

std::string processName(pid_t process) {
  std::array<char, 2 * MAXCOMLEN + 1> name{};
  return proc_name(process, name.data(), name.size()) > 0 ? std::string(name.data()) : std::string();
}

#else

namespace {

// What the kernel keeps of a name is cut off at this length (TASK_COMM_LEN).
constexpr std::size_t kKernelNameLength = 15;

std::string contentOf(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

std::string processName(pid_t process) {
  const std::string folder = "/proc/" + std::to_string(process);
  std::string name = contentOf(folder + "/comm");
  if (name.ends_with('\n')) name.pop_back();
  if (name.size() < kKernelNameLength) return name;
  // The rest of a long name is in the command line, unless the program has changed that.
  const std::string line = contentOf(folder + "/cmdline");
  const std::string first = line.substr(0, line.find('\0'));
  const std::string whole = first.substr(first.rfind('/') + 1);
  return whole.starts_with(name) ? whole : name;
}

#endif

}  // namespace zolt
