#include "app/RememberedSize.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/ReplacementFile.h"

namespace zolt {

namespace {

constexpr int kMaximum = 65535;  // what a pseudo-terminal can be told

}  // namespace

RememberedSize::RememberedSize(const std::string& folder) {
  if (!folder.empty()) m_path = folder + "/terminal-size";
}

std::optional<TerminalSize> RememberedSize::find(std::string_view key) const {
  std::ifstream file(m_path);
  std::string line;
  TerminalSize size;
  if (!std::getline(file, line) || line != key) return std::nullopt;
  if (!(file >> size.rows >> size.columns >> size.pixelWidth >> size.pixelHeight)) return std::nullopt;
  const std::array numbers{size.rows, size.columns, size.pixelWidth, size.pixelHeight};
  const bool isValid = std::ranges::all_of(numbers, [](int number) { return number > 0 && number <= kMaximum; });
  return isValid ? std::optional(size) : std::nullopt;
}

void RememberedSize::set(std::string_view key, const TerminalSize& size) const {
  if (m_path.empty() || find(key) == size) return;
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(m_path).parent_path(), ignored);
  ReplacementFile file(m_path);
  file.write(key);
  for (const int number : {size.rows, size.columns, size.pixelWidth, size.pixelHeight}) {
    file.write("\n");
    file.write(std::to_string(number));
  }
  file.replace();
}

}  // namespace zolt
