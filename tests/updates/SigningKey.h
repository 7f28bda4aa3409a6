#pragma once

#include <QByteArray>
#include <QString>

namespace zolt::test {

/// A pair of Ed25519 keys of a maker of updates.
class SigningKey {
 public:
  /// The pair that belongs to a seed of 32 bytes, here all of the value `seed`.
  explicit SigningKey(unsigned char seed);
  /// The pair that belongs to a seed of 32 bytes.
  explicit SigningKey(const QByteArray& seed);

  /// In base64, as the settings have it.
  QString publicKey() const { return QString::fromLatin1(m_publicKey.toBase64()); }
  /// In base64, as feeds have it.
  QByteArray signatureOf(const QByteArray& message) const;

 private:
  QByteArray m_publicKey;
  QByteArray m_secretKey;
};

}  // namespace zolt::test
