#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/TerminalSize.h"

namespace zolt {

/// The terminal size of the first window, kept from one start to the next in a file: computing it needs the sizes of
/// fonts, and loading those takes longer than starting a shell.
///
/// The size holds for one key, which names what it was computed from. A file that is missing, damaged or of another key
/// is no size. Whatever cannot be written is not remembered. Main thread.
class RememberedSize {
 public:
  /// `folder` need not exist; an empty one remembers nothing.
  explicit RememberedSize(const std::string& folder);

  std::optional<TerminalSize> find(std::string_view key) const;
  /// Writes the file only if it says something else. `key` is one line.
  void set(std::string_view key, const TerminalSize& size) const;

 private:
  std::string m_path;
};

}  // namespace zolt
