#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Result.h"
#include "history/BlockCodec.h"
#include "platform/Descriptor.h"
#include "platform/ReplacementFile.h"

namespace zolt {

/// A file of encrypted records: a header with random bytes, the records, and where each of them stands.
///
/// Every file has a key of its own, derived from the given one and its random bytes (BLAKE2b); every record is
/// encrypted and authenticated with its number (XChaCha20-Poly1305). So a record that is damaged costs only itself, and
/// none can stand in another's place. Any one thread.
class SealedFileWriter {
 public:
  /// Writes beside `path`, in a folder that exists; nothing is replaced before `finish`.
  SealedFileWriter(const std::string& path, const BlockCipher::Key& key);

  void add(std::string_view record);
  /// Replaces the file. Returns the `errno` of the first failure; 0 if there was none.
  int finish();

 private:
  void write(std::string_view bytes);

  ReplacementFile m_file;
  std::string m_header;
  BlockCipher m_cipher;
  std::uint64_t m_size = 0;
  std::vector<std::uint64_t> m_ends;  // of the records
};

/// Reads such a file. Safe for any content, in time and memory in proportion to it. Any one thread.
class SealedFileReader {
 public:
  /// Fails with a sentence for the user if there is no such file, it is not this user's own, or its header or the table
  /// of its records cannot be read.
  static Result<SealedFileReader> open(const std::string& path, const BlockCipher::Key& key);

  std::size_t count() const { return m_ends.size(); }
  /// Record number `index` < count(); nothing if it is damaged.
  std::optional<std::string> record(std::size_t index) const;

 private:
  SealedFileReader(Descriptor file, const BlockCipher::Key& key)
      : m_file(std::move(file)), m_cipher(std::make_unique<BlockCipher>(key)) {}

  Descriptor m_file;
  std::unique_ptr<BlockCipher> m_cipher;
  std::vector<std::uint64_t> m_ends;
};

}  // namespace zolt
