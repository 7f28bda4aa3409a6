#include "updates/Signature.h"

#include <sodium.h>

#include <QFile>

#include "updates/UpdateError.h"

namespace zolt {

namespace {

static_assert(crypto_sign_PUBLICKEYBYTES == sizeof(UpdateKey) && crypto_sign_BYTES == sizeof(UpdateSignature));

template <class T>
std::optional<T> decoded(const QString& text) {
  const QByteArray base64 = text.toUtf8();
  T result{};
  std::size_t length = 0;
  const int status = sodium_base642bin(result.bytes.data(), result.bytes.size(), base64.constData(),
                                       static_cast<std::size_t>(base64.size()), nullptr, &length, nullptr,
                                       sodium_base64_VARIANT_ORIGINAL);
  if (status != 0 || length != result.bytes.size()) return std::nullopt;
  return result;
}

}  // namespace

std::optional<UpdateKey> updateKeyOf(const QString& text) {
  return decoded<UpdateKey>(text);
}

std::optional<UpdateSignature> updateSignatureOf(const QString& text) {
  return decoded<UpdateSignature>(text);
}

bool isSigned(QByteArrayView message, const UpdateSignature& signature, const UpdateKey& key) {
  if (sodium_init() < 0) return false;
  return crypto_sign_verify_detached(signature.bytes.data(), reinterpret_cast<const unsigned char*>(message.data()),
                                     static_cast<unsigned long long>(message.size()), key.bytes.data()) == 0;
}

Result<void> verifyFile(const QString& file, const UpdateSignature& signature, const UpdateKey& key) {
  QFile package(file);
  if (!package.open(QIODevice::ReadOnly)) return failureOf(UpdateError::PackageNotSaved);
  if (package.size() == 0) return failureOf(UpdateError::PackageEmpty);
  // Mapped, since a package can be large and is read once, in order.
  const uchar* content = package.map(0, package.size());
  if (!content) return failureOf(UpdateError::PackageNotSaved);
  if (!isSigned(QByteArrayView(content, package.size()), signature, key)) return failureOf(UpdateError::SignatureWrong);
  return {};
}

}  // namespace zolt
