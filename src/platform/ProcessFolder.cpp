#include "platform/ProcessFolder.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#ifdef __APPLE__
#include <libproc.h>
#endif

namespace zolt {

namespace {

#ifdef __APPLE__

std::string statedFolder(pid_t process) {
  proc_vnodepathinfo paths{};
  const int size = proc_pidinfo(process, PROC_PIDVNODEPATHINFO, 0, &paths, sizeof(paths));
  return size == static_cast<int>(sizeof(paths)) ? std::string(paths.pvi_cdir.vip_path) : std::string();
}

#else

std::string statedFolder(pid_t process) {
  std::error_code failed;
  return std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/cwd", failed).string();
}

#endif

}  // namespace

std::string processFolder(pid_t process) {
  std::string folder = statedFolder(process);
  // The path of a folder that was removed is not one, or by now another's.
  std::error_code failed;
  return std::filesystem::is_directory(folder, failed) ? folder : std::string();
}

bool canEnter(const std::string& folder) {
  std::error_code failed;
  return std::filesystem::is_directory(folder, failed) && access(folder.c_str(), X_OK) == 0;
}

}  // namespace zolt
