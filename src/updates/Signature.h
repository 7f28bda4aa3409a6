#pragma once

#include <QByteArrayView>
#include <QString>
#include <array>
#include <optional>

#include "base/Result.h"

namespace zolt {

/// An Ed25519 public key (RFC 8032).
struct UpdateKey {
  std::array<unsigned char, 32> bytes;
};

/// An Ed25519 signature.
struct UpdateSignature {
  std::array<unsigned char, 64> bytes;
};

/// Decodes base64 (RFC 4648, section 4), with padding and without blanks; nothing if `text` is anything else or has the
/// wrong length.
std::optional<UpdateKey> updateKeyOf(const QString& text);
std::optional<UpdateSignature> updateSignatureOf(const QString& text);

/// Whether `signature` is a valid signature of `message` by `key`. Pure; any thread.
bool isSigned(QByteArrayView message, const UpdateSignature& signature, const UpdateKey& key);

/// Fails, with the sentence to show, unless `signature` is a valid signature by `key` of the content of `file`, a path.
/// Any thread.
Result<void> verifyFile(const QString& file, const UpdateSignature& signature, const UpdateKey& key);

}  // namespace zolt
