#pragma once

#include <string>
#include <string_view>

#include "platform/Descriptor.h"

namespace zolt {

/// A file that is written beside another and replaces it only when it is complete: until then, and if anything fails,
/// the other file is untouched. Links are followed; the permissions of the replaced file are kept.
///
/// After the first failure every further call does nothing, and `error` keeps returning it. Any one thread.
class ReplacementFile {
 public:
  /// Creates the temporary file in the folder of `path`. `error` is then EISDIR for a directory, EEXIST for anything
  /// else that is not a regular file, EACCES for a file that is not writable.
  explicit ReplacementFile(const std::string& path);
  /// Removes the temporary file unless it has replaced the other.
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// The `errno` of the first failure; 0 as long as there is none.
  int error() const { return m_error; }
  /// Of the temporary file.
  const std::string& temporaryPath() const { return m_temporary; }

  void write(std::string_view bytes);
  /// Waits until everything written is on the disk.
  void sync();
  /// Renames the file to its target. Nothing may be written after that.
  void replace();

 private:
  void open();
  void check(bool done);

  std::string m_path;
  std::string m_temporary;
  Descriptor m_file;
  int m_error = 0;
};

}  // namespace zolt
