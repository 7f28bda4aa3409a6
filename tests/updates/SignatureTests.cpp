#include "updates/Signature.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "updates/SigningKey.h"
#include "updates/UpdateError.h"

namespace zolt {
namespace {

const test::SigningKey kMaker(1);
const QByteArray kMessage = "the package";

UpdateKey keyOf(const test::SigningKey& signer) {
  return updateKeyOf(signer.publicKey()).value();
}

UpdateSignature signatureBy(const test::SigningKey& signer) {
  return updateSignatureOf(QString::fromLatin1(signer.signatureOf(kMessage))).value();
}

// RFC 8032, section 7.1, test 2. The variants of Ed25519 give another signature for this message of one byte.
TEST(Signature, MatchesTheTestVectorOfTheStandard) {
  const auto base64 = [](const char* hex) { return QString::fromLatin1(QByteArray::fromHex(hex).toBase64()); };
  const auto key = updateKeyOf(base64("3d4017c3e843895a92b70aa74d1b7ebc9c982ccf2ec4968cc0cd55f12af4660c"));
  const auto signature =
      updateSignatureOf(base64("92a009a9f0d4cab8720e820b5f642540a2b27b5416503f8fb3762223ebdb69da"
                               "085ac1e43e15996e458f3613d0f11d8c387b2eaeb4302aeeb00d291612bb0c00"));
  ASSERT_TRUE(key && signature);
  EXPECT_TRUE(isSigned(QByteArrayView("\x72", 1), *signature, *key));
  EXPECT_FALSE(isSigned(QByteArrayView("\x73", 1), *signature, *key));
}

TEST(Signature, IsInvalidForAnotherKeyOrAChangedMessage) {
  const UpdateSignature signature = signatureBy(kMaker);
  EXPECT_TRUE(isSigned(kMessage, signature, keyOf(kMaker)));
  EXPECT_FALSE(isSigned(kMessage, signature, keyOf(test::SigningKey(2))));
  for (qsizetype i = 0; i < kMessage.size(); ++i) {
    QByteArray changed = kMessage;
    changed[i] = static_cast<char>(changed[i] ^ 1);
    EXPECT_FALSE(isSigned(changed, signature, keyOf(kMaker)));
  }
  for (std::size_t i = 0; i < signature.bytes.size(); ++i) {
    UpdateSignature changed = signature;
    changed.bytes[i] ^= 1;
    EXPECT_FALSE(isSigned(kMessage, changed, keyOf(kMaker)));
  }
}

TEST(Signature, IsDecodedOnlyFromStrictBase64OfTheExactLength) {
  const QString key = kMaker.publicKey();
  const QString signature = QString::fromLatin1(kMaker.signatureOf(kMessage));
  EXPECT_TRUE(updateKeyOf(key));
  EXPECT_TRUE(updateSignatureOf(signature));
  const QString wrong[] = {QString(),
                           QStringLiteral(" ") + key,
                           key + QStringLiteral("\n"),
                           key.chopped(1),  // without its padding
                           key + QStringLiteral("="),
                           QString(key).insert(4, QStringLiteral("*")),
                           QString(key).insert(4, QStringLiteral(" ")),
                           QString::fromLatin1(QByteArray(31, 'a').toBase64()),
                           QString::fromLatin1(QByteArray(33, 'a').toBase64()),
                           QString(QStringLiteral("_") + key.sliced(1))};
  for (const QString& text : wrong) {
    EXPECT_FALSE(updateKeyOf(text)) << text.toStdString();
  }
  EXPECT_FALSE(updateSignatureOf(signature.chopped(1)));
  EXPECT_FALSE(updateSignatureOf(signature.chopped(2)));
  EXPECT_FALSE(updateSignatureOf(signature + QStringLiteral(" ")));
  EXPECT_FALSE(updateSignatureOf(QString::fromLatin1(QByteArray(63, 'a').toBase64())));
  EXPECT_FALSE(updateSignatureOf(QString::fromLatin1(QByteArray(65, 'a').toBase64())));
  EXPECT_FALSE(updateSignatureOf(key));
}

TEST(Signature, IsVerifiedAgainstTheContentOfAFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("package"));
  const auto write = [&](const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
  };
  const auto verified = [&] { return verifyFile(path, signatureBy(kMaker), keyOf(kMaker)); };
  EXPECT_EQ(verified().reason(), sentenceOf(UpdateError::PackageNotSaved).toStdString());
  write({});
  EXPECT_EQ(verified().reason(), sentenceOf(UpdateError::PackageEmpty).toStdString());
  write(kMessage);
  EXPECT_TRUE(verified());
  write(kMessage + "x");
  EXPECT_EQ(verified().reason(), sentenceOf(UpdateError::SignatureWrong).toStdString());
}

}  // namespace
}  // namespace zolt
