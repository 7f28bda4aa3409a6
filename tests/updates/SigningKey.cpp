#include "updates/SigningKey.h"

#include <sodium.h>

namespace zolt::test {

namespace {

unsigned char* bytes(QByteArray& array) {
  return reinterpret_cast<unsigned char*>(array.data());
}

const unsigned char* bytes(const QByteArray& array) {
  return reinterpret_cast<const unsigned char*>(array.constData());
}

}  // namespace

SigningKey::SigningKey(unsigned char seed) : SigningKey(QByteArray(crypto_sign_SEEDBYTES, static_cast<char>(seed))) {}

SigningKey::SigningKey(const QByteArray& seed)
    : m_publicKey(crypto_sign_PUBLICKEYBYTES, '\0'), m_secretKey(crypto_sign_SECRETKEYBYTES, '\0') {
  crypto_sign_seed_keypair(bytes(m_publicKey), bytes(m_secretKey), bytes(seed));
}

QByteArray SigningKey::signatureOf(const QByteArray& message) const {
  QByteArray signature(crypto_sign_BYTES, '\0');
  crypto_sign_detached(bytes(signature), nullptr, bytes(message), static_cast<unsigned long long>(message.size()),
                       bytes(m_secretKey));
  return signature.toBase64();
}

}  // namespace zolt::test
