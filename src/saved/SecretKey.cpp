#include "saved/SecretKey.h"

#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/Fatal.h"
#include "platform/Descriptor.h"
#include "platform/Pipe.h"

namespace zolt {

namespace {

constexpr mode_t kOnlyForTheUser = 0600;

Result<BlockCipher::Key> readKey(int file) {
  struct stat facts {};
  if (fstat(file, &facts) != 0) return Failure{errorText(errno)};
  if (!S_ISREG(facts.st_mode) || facts.st_uid != geteuid()) return Failure{"the key is not a file of this user"};
  if ((facts.st_mode & (S_IRWXG | S_IRWXO)) != 0) return Failure{"others can read the key"};
  BlockCipher::Key key{};
  const ssize_t got = read(file, key.data(), key.size());
  if (got != static_cast<ssize_t>(key.size())) return Failure{"the key is damaged"};
  return key;
}

Result<BlockCipher::Key> makeKey(const std::string& path) {
  if (sodium_init() < 0) fatalError("saved: the system provides no random numbers");
  BlockCipher::Key key{};
  randombytes_buf(key.data(), key.size());
  const Descriptor file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOnlyForTheUser));
  if (!file) return Failure{errorText(errno)};
  if (write(file.get(), key.data(), key.size()) == static_cast<ssize_t>(key.size())) return key;
  const int error = errno;
  unlink(path.c_str());
  return Failure{errorText(error)};
}

}  // namespace

Result<BlockCipher::Key> keyFromFile(const std::string& path) {
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
  if (file) return readKey(file.get());
  return errno == ENOENT ? makeKey(path) : Failure{errorText(errno)};
}

}  // namespace zolt
