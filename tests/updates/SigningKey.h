#pragma once

#include <QByteArray>
#include <QString>

namespace zolt::test {

/// An Ed25519 key pair for signing updates.
class SigningKey {
 public:
  /// The pair derived from 32 bytes with the value `seed`.
  explicit SigningKey(unsigned char seed);
  /// The pair derived from a seed of 32 bytes.
  explicit SigningKey(const QByteArray& seed);

  /// In base64, as in the settings.
  QString publicKey() const { return QString::fromLatin1(m_publicKey.toBase64()); }
  /// In base64, as in feeds.
  QByteArray signatureOf(const QByteArray& message) const;

 private:
  QByteArray m_publicKey;
  QByteArray m_secretKey;
};

}  // namespace zolt::test
