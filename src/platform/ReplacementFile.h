#pragma once

#include <string>
#include <string_view>

#include "platform/Descriptor.h"

namespace zolt {

/// A file that is written beside another and takes its place only when it is complete: until then, and for good when
/// something fails, the other stays as it is. A link is followed; permissions are those of the file that is replaced.
///
/// The first failure stays: what is done after it does nothing. Any one thread.
class ReplacementFile {
 public:
  /// Makes the temporary file in the folder of `path`. Fails with EISDIR where that is a folder, with EEXIST where it
  /// is something else that is no file, with EACCES where it is a file that may not be written.
  explicit ReplacementFile(const std::string& path);
  /// Removes the temporary file where it has taken nobody's place.
  ~ReplacementFile();
  ReplacementFile(const ReplacementFile&) = delete;
  ReplacementFile& operator=(const ReplacementFile&) = delete;

  /// The `errno` of what failed first; 0 as long as nothing has.
  int error() const { return m_error; }
  /// Of the temporary file.
  const std::string& temporaryPath() const { return m_temporary; }

  void write(std::string_view bytes);
  /// Waits until all that was written is on the disk.
  void sync();
  /// Gives the file its name. Nothing may be written from then on.
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
