#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zolt {

/// Compresses `bytes` into a zstd frame that records its size. Any thread.
std::string compressBlock(std::string_view bytes);
/// Decompresses such a frame; nothing when it is damaged or holds more than 16 MiB. Any thread.
std::optional<std::string> decompressBlock(std::string_view frame);

/// Encrypts blocks with one key. Any thread.
class BlockCipher {
 public:
  using Key = std::array<unsigned char, 32>;

  /// A random key that never leaves the process.
  BlockCipher();
  /// A key that has not encrypted anything else.
  explicit BlockCipher(const Key& key) : m_key(key) {}
  BlockCipher(const BlockCipher&) = delete;
  BlockCipher& operator=(const BlockCipher&) = delete;
  ~BlockCipher();

  /// The bytes that sealing adds to a block.
  static constexpr std::size_t overhead = 16;

  /// Encrypts and authenticates block `number` (XChaCha20-Poly1305). The number is the nonce, so it must never be used
  /// for two different contents.
  std::string seal(std::uint64_t number, std::string_view bytes) const;
  /// Decrypts block `number`; nothing when `sealed` was changed, or sealed under another number or key.
  std::optional<std::string> open(std::uint64_t number, std::string_view sealed) const;

 private:
  Key m_key{};
};

}  // namespace zolt
