// A web server for a folder with a feed, and a tool that signs packages for it.
//
//   feedserver FOLDER            serves FOLDER over http on 127.0.0.1; prints its port, ends at the end of its input
//   feedserver --make-key FILE   writes a new secret key to the new FILE and prints the public key
//   feedserver --sign KEY FILE   prints the attributes of the enclosure for FILE
#include <sodium.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QSocketNotifier>
#include <cstdio>

#include "updates/HttpServer.h"
#include "updates/SigningKey.h"

namespace {

using zolt::test::HttpReply;

constexpr int kUsageStatus = 2;

int fail(const QString& reason) {
  std::fprintf(stderr, "feedserver: %s\n", qUtf8Printable(reason));
  return 1;
}

HttpReply replyOf(const QDir& folder, const QString& path) {
  const QString name = QFileInfo(folder.filePath(path.sliced(1))).canonicalFilePath();
  QFile file(name);
  const bool isInside = name.startsWith(folder.canonicalPath() + QLatin1Char('/'));
  if (!isInside || !QFileInfo(name).isFile() || !file.open(QIODevice::ReadOnly)) {
    return {.status = 404, .type = "text/plain", .body = "not found\n"};
  }
  return {.type = QMimeDatabase().mimeTypeForFile(name).name().toLatin1(), .body = file.readAll()};
}

int serve(const QString& path) {
  const QDir folder(path);
  if (!folder.exists()) return fail(path + QStringLiteral(" is not a folder"));
  const zolt::test::HttpServer server([&](const QString& asked) { return replyOf(folder, asked); });
  std::printf("%d\n", server.port());
  std::fflush(stdout);
  QSocketNotifier input(fileno(stdin), QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, [&] {
    if (std::getchar() == EOF) QCoreApplication::quit();
  });
  return QCoreApplication::exec();
}

int makeKey(const QString& path) {
  QByteArray seed(crypto_sign_SEEDBYTES, '\0');
  randombytes_buf(seed.data(), static_cast<std::size_t>(seed.size()));
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner) ||
      file.write(seed.toBase64() + '\n') < 0 || !file.flush()) {
    return fail(file.errorString());
  }
  std::printf("%s\n", qPrintable(zolt::test::SigningKey(seed).publicKey()));
  return 0;
}

int sign(const QString& keyPath, const QString& packagePath) {
  QFile key(keyPath);
  QFile package(packagePath);
  if (!key.open(QIODevice::ReadOnly)) return fail(key.errorString());
  if (!package.open(QIODevice::ReadOnly)) return fail(package.errorString());
  const QByteArray seed = QByteArray::fromBase64(key.readAll().trimmed());
  if (seed.size() != crypto_sign_SEEDBYTES) return fail(keyPath + QStringLiteral(" is not a key"));
  const QByteArray content = package.readAll();
  std::printf("sparkle:edSignature=\"%s\" length=\"%lld\"\n",
              zolt::test::SigningKey(seed).signatureOf(content).constData(), static_cast<long long>(content.size()));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments().sliced(1);
  if (sodium_init() < 0) return fail(QStringLiteral("the system provides no random numbers"));
  if (arguments.size() == 1 && !arguments[0].startsWith(QLatin1String("--"))) return serve(arguments[0]);
  if (arguments.size() == 2 && arguments[0] == QLatin1String("--make-key")) return makeKey(arguments[1]);
  if (arguments.size() == 3 && arguments[0] == QLatin1String("--sign")) return sign(arguments[1], arguments[2]);
  std::fputs("usage: feedserver FOLDER | --make-key FILE | --sign KEY FILE\n", stderr);
  return kUsageStatus;
}
