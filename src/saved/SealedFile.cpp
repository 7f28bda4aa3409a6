#include "saved/SealedFile.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "base/Fatal.h"
#include "platform/Pipe.h"

namespace zolt {

namespace {

// "Zolt", and the version of the format.
constexpr std::string_view kMagic{"ZOLT-SEALED\0\0\0\1", 15};
constexpr std::size_t kSaltBytes = 16;
constexpr std::size_t kHeaderBytes = kMagic.size() + kSaltBytes;
// The table of the records is encrypted under a number that no record has, and ends with its own size.
constexpr std::uint64_t kTable = UINT64_MAX;
constexpr std::size_t kNumberBytes = 8;

std::string numberBytes(std::uint64_t number) {
  std::string bytes;
  for (std::size_t i = 0; i < kNumberBytes; ++i) {
    bytes.push_back(static_cast<char>(number >> (8 * i)));
  }
  return bytes;
}

std::uint64_t numberIn(std::string_view bytes) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < kNumberBytes; ++i) {
    number |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
  }
  return number;
}

std::string newHeader() {
  if (sodium_init() < 0) fatalError("saved: the system provides no random numbers");
  std::string salt(kSaltBytes, '\0');
  randombytes_buf(salt.data(), salt.size());
  return std::string(kMagic) + salt;
}

BlockCipher::Key keyOf(std::string_view header, const BlockCipher::Key& key) {
  BlockCipher::Key own{};
  crypto_generichash(own.data(), own.size(), reinterpret_cast<const unsigned char*>(header.data()), header.size(),
                     key.data(), key.size());
  return own;
}

std::optional<std::string> readAt(int file, std::uint64_t offset, std::uint64_t size) {
  std::string bytes(size, '\0');
  for (std::size_t done = 0; done < size;) {
    const ssize_t got = pread(file, bytes.data() + done, size - done, static_cast<off_t>(offset + done));
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return std::nullopt;
    done += static_cast<std::size_t>(got);
  }
  return bytes;
}

}  // namespace

SealedFileWriter::SealedFileWriter(const std::string& path, const BlockCipher::Key& key)
    : m_file(path), m_header(newHeader()), m_cipher(keyOf(m_header, key)) {
  write(m_header);
}

void SealedFileWriter::write(std::string_view bytes) {
  m_file.write(bytes);
  m_size += bytes.size();
}

void SealedFileWriter::add(std::string_view record) {
  write(m_cipher.seal(m_ends.size(), record));
  m_ends.push_back(m_size);
}

int SealedFileWriter::finish() {
  std::string table;
  for (const std::uint64_t end : m_ends) {
    table += numberBytes(end);
  }
  const std::string sealed = m_cipher.seal(kTable, table);
  write(sealed);
  write(numberBytes(sealed.size()));
  m_file.replace();
  return m_file.error();
}

Result<SealedFileReader> SealedFileReader::open(const std::string& path, const BlockCipher::Key& key) {
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
  if (!file) return Failure{errorText(errno)};
  struct stat facts {};
  if (fstat(file.get(), &facts) != 0) return Failure{errorText(errno)};
  if (!S_ISREG(facts.st_mode)) return Failure{"it is not a file"};
  if (facts.st_uid != geteuid()) return Failure{"the file belongs to another user"};
  const auto size = static_cast<std::uint64_t>(facts.st_size);
  if (size < kHeaderBytes + kNumberBytes) return Failure{"the file is too short"};

  const auto header = readAt(file.get(), 0, kHeaderBytes);
  if (!header) return Failure{"the file cannot be read"};
  if (!header->starts_with(kMagic.substr(0, kMagic.size() - 1))) return Failure{"it is not a file of Zolt's"};
  if (!header->starts_with(kMagic)) return Failure{"another version of Zolt saved it"};
  const auto tableSize = readAt(file.get(), size - kNumberBytes, kNumberBytes);
  const std::uint64_t sealedSize = tableSize ? numberIn(*tableSize) : UINT64_MAX;
  if (sealedSize > size - kHeaderBytes - kNumberBytes) return Failure{"the file is damaged"};
  const std::uint64_t tableAt = size - kNumberBytes - sealedSize;
  const auto sealed = readAt(file.get(), tableAt, sealedSize);

  SealedFileReader reader(std::move(file), keyOf(*header, key));
  const auto table = sealed ? reader.m_cipher->open(kTable, *sealed) : std::nullopt;
  if (!table) return Failure{"the file is damaged, or encrypted with another key"};
  for (std::size_t at = 0; at + kNumberBytes <= table->size(); at += kNumberBytes) {
    reader.m_ends.push_back(numberIn(std::string_view(*table).substr(at)));
  }
  const bool isOrdered =
      std::ranges::is_sorted(reader.m_ends) &&
      (reader.m_ends.empty() || (reader.m_ends.front() >= kHeaderBytes && reader.m_ends.back() <= tableAt));
  if (!isOrdered) return Failure{"the file is damaged"};
  return reader;
}

std::optional<std::string> SealedFileReader::record(std::size_t index) const {
  const std::uint64_t begin = index == 0 ? kHeaderBytes : m_ends[index - 1];
  const auto sealed = readAt(m_file.get(), begin, m_ends[index] - begin);
  return sealed ? m_cipher->open(index, *sealed) : std::nullopt;
}

}  // namespace zolt
