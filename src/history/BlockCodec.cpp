#include "history/BlockCodec.h"

#include <sodium.h>
#include <zstd.h>

#include <memory>

#include "base/Fatal.h"

namespace zolt {

namespace {

constexpr int kFastLevel = 1;
constexpr unsigned long long kLargestBlock = 16ULL << 20;

struct FreeContext {
  void operator()(ZSTD_CCtx* context) const { ZSTD_freeCCtx(context); }
};

struct FreeDecompression {
  void operator()(ZSTD_DCtx* context) const { ZSTD_freeDCtx(context); }
};

using Nonce = std::array<unsigned char, crypto_aead_xchacha20poly1305_ietf_NPUBBYTES>;

Nonce nonceOf(std::uint64_t number) {
  Nonce nonce{};
  for (std::size_t i = 0; i < sizeof number; ++i) {
    nonce[i] = static_cast<unsigned char>(number >> (8 * i));
  }
  return nonce;
}

const unsigned char* unsignedBytes(std::string_view bytes) {
  return reinterpret_cast<const unsigned char*>(bytes.data());
}

unsigned char* unsignedBytes(std::string& bytes) {
  return reinterpret_cast<unsigned char*>(bytes.data());
}

}  // namespace

std::string compressBlock(std::string_view bytes) {
  thread_local const std::unique_ptr<ZSTD_CCtx, FreeContext> context(ZSTD_createCCtx());
  thread_local std::string room;
  room.resize(ZSTD_compressBound(bytes.size()));
  const std::size_t size =
      ZSTD_compressCCtx(context.get(), room.data(), room.size(), bytes.data(), bytes.size(), kFastLevel);
  if (ZSTD_isError(size) != 0) fatalError("history: a block could not be compressed");
  return room.substr(0, size);
}

std::optional<std::string> decompressBlock(std::string_view frame) {
  const unsigned long long size = ZSTD_getFrameContentSize(frame.data(), frame.size());
  if (size == ZSTD_CONTENTSIZE_UNKNOWN || size == ZSTD_CONTENTSIZE_ERROR || size > kLargestBlock) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(size), '\0');
  // One for each thread: it is larger than a block.
  thread_local const std::unique_ptr<ZSTD_DCtx, FreeDecompression> context(ZSTD_createDCtx());
  const std::size_t done = ZSTD_decompressDCtx(context.get(), bytes.data(), bytes.size(), frame.data(), frame.size());
  if (ZSTD_isError(done) != 0 || done != bytes.size()) return std::nullopt;
  return bytes;
}

BlockCipher::BlockCipher() {
  static_assert(overhead == crypto_aead_xchacha20poly1305_ietf_ABYTES);
  static_assert(sizeof m_key == crypto_aead_xchacha20poly1305_ietf_KEYBYTES);
  if (sodium_init() < 0) fatalError("history: the system provides no random numbers");
  crypto_aead_xchacha20poly1305_ietf_keygen(m_key.data());
}

BlockCipher::~BlockCipher() {
  sodium_memzero(m_key.data(), m_key.size());
}

std::string BlockCipher::seal(std::uint64_t number, std::string_view bytes) const {
  std::string sealed(bytes.size() + overhead, '\0');
  const Nonce nonce = nonceOf(number);
  crypto_aead_xchacha20poly1305_ietf_encrypt(unsignedBytes(sealed), nullptr, unsignedBytes(bytes), bytes.size(),
                                             nullptr, 0, nullptr, nonce.data(), m_key.data());
  return sealed;
}

std::optional<std::string> BlockCipher::open(std::uint64_t number, std::string_view sealed) const {
  if (sealed.size() < overhead) return std::nullopt;
  std::string bytes(sealed.size() - overhead, '\0');
  const Nonce nonce = nonceOf(number);
  if (crypto_aead_xchacha20poly1305_ietf_decrypt(unsignedBytes(bytes), nullptr, nullptr, unsignedBytes(sealed),
                                                 sealed.size(), nullptr, 0, nonce.data(), m_key.data()) != 0) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace zolt
