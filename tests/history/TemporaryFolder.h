#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace zolt::test {

/// A temporary folder, removed with its content in the destructor.
class TemporaryFolder {
 public:
  TemporaryFolder() : m_path((std::filesystem::temp_directory_path() / "history-test-XXXXXX").string()) {
    if (mkdtemp(m_path.data()) == nullptr) std::abort();
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

}  // namespace zolt::test
