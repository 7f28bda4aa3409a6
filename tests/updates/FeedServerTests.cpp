#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "updates/Fetch.h"
#include "updates/Signature.h"
#include "updates/UpdateFixture.h"

namespace zolt {
namespace {

class FeedServerTest : public testing::Test {
 protected:
  void write(const char* name, const QByteArray& content) const {
    QFile file(path(name));
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path(name)).path()) && file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(content), content.size());
  }
  QString path(const char* name) const { return folder.filePath(QString::fromLatin1(name)); }
  static int run(const QStringList& arguments, QString& output) {
    QProcess process;
    process.start(QStringLiteral(ZOLT_FEED_SERVER), arguments);
    EXPECT_TRUE(process.waitForFinished(test::kPatience.count()));
    output = QString::fromUtf8(process.readAllStandardOutput()).trimmed();
    return process.exitCode();
  }
  /// The content at an address; nothing if it cannot be fetched.
  static std::optional<QByteArray> get(const QString& address) {
    UpdateNetwork network;
    QBuffer content;
    content.open(QIODevice::WriteOnly);
    Fetch fetch(network.manager(),
                {.url = QUrl(address), .maximumBytes = 1000, .exactBytes = {}, .idleLimit = test::kPatience}, content);
    std::optional<bool> success;
    QObject::connect(&fetch, &Fetch::succeeded, [&] { success = true; });
    QObject::connect(&fetch, &Fetch::failed, [&] { success = false; });
    fetch.start();
    EXPECT_TRUE(test::waitFor([&] { return success.has_value(); }));
    return success.value_or(false) ? std::optional(content.data()) : std::nullopt;
  }

  QTemporaryDir folder;
};

TEST_F(FeedServerTest, ServesAFolderAndNothingBesideIt) {
  write("served/appcast.xml", "<rss/>");
  write("secret", "secret");
  QProcess server;
  server.start(QStringLiteral(ZOLT_FEED_SERVER), {path("served")});
  ASSERT_TRUE(server.waitForReadyRead(test::kPatience.count()));
  const QString root = QStringLiteral("http://127.0.0.1:") + QString::fromLatin1(server.readLine().trimmed());
  EXPECT_EQ(get(root + QStringLiteral("/appcast.xml")), "<rss/>");
  EXPECT_EQ(get(root + QStringLiteral("/missing")), std::nullopt);
  EXPECT_EQ(get(root + QStringLiteral("/%2E%2E/secret")), std::nullopt);
  EXPECT_EQ(get(root + QStringLiteral("/")), std::nullopt);
  server.closeWriteChannel();
  EXPECT_TRUE(server.waitForFinished(test::kPatience.count()));
  EXPECT_EQ(server.exitCode(), 0);
}

TEST_F(FeedServerTest, ItsSignaturesAreValidForUpdates) {
  write("package", "content");
  QString publicKey;
  ASSERT_EQ(run({QStringLiteral("--make-key"), path("key")}, publicKey), 0);
  EXPECT_EQ(QFile::permissions(path("key")) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
  QString attributes;
  ASSERT_EQ(run({QStringLiteral("--sign"), path("key"), path("package")}, attributes), 0);
  EXPECT_TRUE(attributes.endsWith(QLatin1String(" length=\"7\"")));
  const auto key = updateKeyOf(publicKey);
  const auto signature = updateSignatureOf(attributes.section(u'"', 1, 1));
  ASSERT_TRUE(key && signature);
  EXPECT_TRUE(isSigned("content", *signature, *key));
  QString again;
  EXPECT_EQ(run({QStringLiteral("--make-key"), path("key")}, again), 1);
}

}  // namespace
}  // namespace zolt
