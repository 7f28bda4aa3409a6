#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zolt {

/// `bytes` compressed: a zstd frame that knows its size. Any thread.
std::string compressBlock(std::string_view bytes);
/// The bytes again; nothing where it is no such frame, or one of more than 16 MiB. Any thread.
std::optional<std::string> decompressBlock(std::string_view frame);

/// Seals blocks with a key of its own, made at random, that never leaves the process. Any thread.
class BlockCipher {
 public:
  BlockCipher();
  BlockCipher(const BlockCipher&) = delete;
  BlockCipher& operator=(const BlockCipher&) = delete;
  ~BlockCipher();

  /// What a sealed block is longer than its plain bytes.
  static constexpr std::size_t overhead = 16;

  /// `bytes` encrypted and authenticated as block `number` (XChaCha20-Poly1305, the number as the nonce): a number is
  /// used for one content only.
  std::string seal(std::uint64_t number, std::string_view bytes) const;
  /// The bytes of block `number`; nothing where `sealed` was changed, or sealed with another number or key.
  std::optional<std::string> open(std::uint64_t number, std::string_view sealed) const;

 private:
  std::array<unsigned char, 32> m_key{};
};

}  // namespace zolt
