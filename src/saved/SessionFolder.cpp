#include "saved/SessionFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/Pipe.h"
#include "saved/SealedFile.h"
#include "saved/TerminalFile.h"

namespace zolt {

namespace {

constexpr std::string_view kTerminalEnding = ".terminal";

}  // namespace

bool SessionFolder::exists() const {
  std::error_code ignored;
  return std::filesystem::is_directory(m_path, ignored);
}

Result<void> SessionFolder::make() const {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(m_path).parent_path(), ignored);
  if (mkdir(m_path.c_str(), S_IRWXU) != 0 && errno != EEXIST) return Failure{errorText(errno)};
  // Whoever made it.
  if (chmod(m_path.c_str(), S_IRWXU) != 0) return Failure{errorText(errno)};
  return {};
}

std::string SessionFolder::newFileName() {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::random_device random;
  std::uniform_int_distribution<std::size_t> digits(0, kDigits.size() - 1);
  std::string name(16, '0');
  std::ranges::generate(name, [&] { return kDigits[digits(random)]; });
  return name.append(kTerminalEnding);
}

Result<void> SessionFolder::save(const SavedSession& session,
                                 const std::map<std::string, vt::TerminalRecord>& terminals,
                                 const BlockCipher::Key& key) const {
  int error = 0;
  for (const auto& [name, terminal] : terminals) {
    const int failed = writeTerminalFile(pathOf(name), key, terminal);
    if (error == 0) error = failed;
  }
  SealedFileWriter layout(layoutPath(), key);
  layout.add(encodedSession(session));
  // What is older goes only once nothing names it any more.
  if (const int failed = layout.finish(); failed != 0) return Failure{errorText(failed)};
  removeAllBut(terminals);
  if (error != 0) return Failure{errorText(error)};
  return {};
}

SessionFolder::Kept SessionFolder::load(const BlockCipher::Key& key) const {
  const auto file = SealedFileReader::open(layoutPath(), key);
  const auto bytes = file && file.value().count() > 0 ? file.value().record(0) : std::nullopt;
  if (auto session = bytes ? decodedSession(*bytes) : std::nullopt) return {.session = std::move(*session)};
  SavedWindow all;
  for (const std::string& name : terminalFiles()) {
    all.tabs.push_back({.panes = {{.file = name}}, .layout = sideBySide(1)});
  }
  if (all.tabs.empty()) return {};
  return {.session = {.windows = {std::move(all)}}, .isWithoutLayout = true};
}

Result<vt::StoredTerminal> SessionFolder::terminal(const std::string& file, const BlockCipher::Key& key) const {
  return readTerminalFile(pathOf(file), key);
}

void SessionFolder::clear() const {
  unlink(layoutPath().c_str());
  removeAllBut({});
}

std::vector<std::string> SessionFolder::terminalFiles() const {
  std::vector<std::string> names;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(m_path, error), end; !error && entry != end; entry.increment(error)) {
    std::string name = entry->path().filename().string();
    if (name.ends_with(kTerminalEnding)) names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

void SessionFolder::removeAllBut(const std::map<std::string, vt::TerminalRecord>& terminals) const {
  for (const std::string& name : terminalFiles()) {
    if (!terminals.contains(name)) unlink(pathOf(name).c_str());
  }
}

}  // namespace zolt
