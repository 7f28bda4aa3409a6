#include "history/SpillFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace zolt {

namespace {

class UnlinkedFile : public SpillFile {
 public:
  explicit UnlinkedFile(int descriptor) : m_descriptor(descriptor) {}
  UnlinkedFile(const UnlinkedFile&) = delete;
  UnlinkedFile& operator=(const UnlinkedFile&) = delete;
  ~UnlinkedFile() override { close(m_descriptor); }

  bool write(std::uint64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = pwrite(m_descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      offset += static_cast<std::uint64_t>(written);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
  }

  bool read(std::uint64_t offset, std::size_t size, std::string& bytes) const override {
    bytes.resize(size);
    for (std::size_t done = 0; done < size;) {
      const ssize_t count = pread(m_descriptor, bytes.data() + done, size - done, static_cast<off_t>(offset + done));
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      done += static_cast<std::size_t>(count);
    }
    return true;
  }

 private:
  int m_descriptor;
};

}  // namespace

std::unique_ptr<SpillFile> openSpillFile(const std::string& folder) {
  std::error_code ignored;
  // Mode 0700, as the XDG Base Directory Specification wants it; an existing folder keeps its mode.
  if (std::filesystem::create_directories(folder, ignored)) {
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, ignored);
  }
  std::string path = folder + "/history-XXXXXX";
  const int descriptor = mkostemp(path.data(), O_CLOEXEC);  // of mode 0600
  if (descriptor < 0) return nullptr;
  unlink(path.c_str());
  return std::make_unique<UnlinkedFile>(descriptor);
}

}  // namespace zolt
