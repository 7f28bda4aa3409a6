#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/Result.h"
#include "history/BlockCodec.h"
#include "saved/SavedSession.h"
#include "vt/TerminalRecord.h"

namespace zolt {

/// The folder in which a session is kept: its layout, and a file for each terminal, encrypted with one key. What was
/// saved before stays whole until what is saved now is. Any one thread.
class SessionFolder {
 public:
  explicit SessionFolder(std::string path) : m_path(std::move(path)) {}

  const std::string& path() const { return m_path; }
  bool exists() const;
  /// Makes the folder, if it is not there, and keeps others out.
  Result<void> make() const;
  /// A random name for a terminal's file (SavedPane::file).
  static std::string newFileName();

  /// Replaces what is kept, in the folder that exists. `terminals` are by the names of their files. The first failure
  /// of a terminal's file does not keep the others from being saved, but is returned.
  Result<void> save(const SavedSession& session, const std::map<std::string, vt::TerminalRecord>& terminals,
                    const BlockCipher::Key& key) const;

  /// What is kept; nothing in it if nothing is. If there are terminals but no layout that can be read, all are tabs of
  /// one window, without a place, size or folder: `isWithoutLayout`.
  struct Kept {
    SavedSession session{};
    bool isWithoutLayout = false;
  };
  Kept load(const BlockCipher::Key& key) const;
  Result<vt::StoredTerminal> terminal(const std::string& file, const BlockCipher::Key& key) const;

  /// Removes what is kept, and nothing else.
  void clear() const;

 private:
  std::string layoutPath() const { return m_path + "/layout"; }
  std::string pathOf(const std::string& file) const { return m_path + "/" + file; }
  std::vector<std::string> terminalFiles() const;
  void removeAllBut(const std::map<std::string, vt::TerminalRecord>& terminals) const;

  std::string m_path;
};

}  // namespace zolt
