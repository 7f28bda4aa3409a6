#include "platform/ReplacementFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace zolt {

namespace {

constexpr mode_t kPermissions = 0777;

// `path` with links followed.
std::string resolved(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : path;
}

std::string folderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

}  // namespace

ReplacementFile::ReplacementFile(const std::string& path) : m_path(resolved(path)) {
  struct stat facts {};
  const bool exists = stat(m_path.c_str(), &facts) == 0;
  if (!exists && errno != ENOENT) m_error = errno;
  if (exists && !S_ISREG(facts.st_mode)) m_error = S_ISDIR(facts.st_mode) ? EISDIR : EEXIST;
  if (exists && m_error == 0) check(access(m_path.c_str(), W_OK) == 0);
  if (m_error == 0) open();
  if (exists && m_error == 0) check(fchmod(m_file.get(), facts.st_mode & kPermissions) == 0);
}

ReplacementFile::~ReplacementFile() {
  if (!m_temporary.empty()) unlink(m_temporary.c_str());
}

// Not mkstemp: a file created by open() gets the permissions of the user's umask.
void ReplacementFile::open() {
  static std::atomic<unsigned> number = 0;
  constexpr mode_t kReadWrite = 0666;
  const std::string start = folderOf(m_path) + "/.zolt-" + std::to_string(getpid()) + '-';
  do {
    const std::string name = start + std::to_string(++number);
    m_file = Descriptor(::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, kReadWrite));
    if (m_file) m_temporary = name;
  } while (!m_file && errno == EEXIST);
  check(static_cast<bool>(m_file));
}

void ReplacementFile::check(bool done) {
  if (!done && m_error == 0) m_error = errno;
}

void ReplacementFile::write(std::string_view bytes) {
  while (m_error == 0 && !bytes.empty()) {
    const ssize_t count = ::write(m_file.get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    check(count >= 0);
    if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void ReplacementFile::sync() {
  if (m_error != 0) return;
  // Not supported by every file system.
  const bool done = fsync(m_file.get()) == 0 || errno == EINVAL || errno == ENOTSUP;
  check(done);
}

void ReplacementFile::replace() {
  if (m_error != 0) return;
  m_file.reset();
  check(std::rename(m_temporary.c_str(), m_path.c_str()) == 0);
  if (m_error == 0) m_temporary.clear();
}

}  // namespace zolt
