#pragma once

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <map>

#include "platform/UserDefaults.h"
#include "support/WaitFor.h"
#include "updates/Feed.h"
#include "updates/HttpServer.h"
#include "updates/SigningKey.h"
#include "updates/UpdateContext.h"
#include "updates/UpdateError.h"

namespace zolt::test {

/// A web server with a feed, settings with its address and public key, and an empty download folder.
class UpdateTest : public testing::Test {
 protected:
  UpdateTest() {
    defaults.setString("SUFeedURL", server.address(QStringLiteral("/appcast.xml")).toStdString());
    defaults.setString("SUPublicEDKey", maker.publicKey().toStdString());
    environment.runningVersion = QStringLiteral("1.0");
    environment.downloadFolder = downloads;
    environment.now = [this] { return now; };
    environment.systemVersion = QStringLiteral("6.1");
  }

  HttpReply replyTo(const QString& path) const {
    const auto found = replies.find(path);
    return found == replies.end() ? HttpReply{.status = 404, .body = "not here"} : found->second;
  }

  void serve(const char* path, HttpReply reply) { replies[QString::fromLatin1(path)] = std::move(reply); }
  void serveFeed(const QByteArray& items) {
    serve("/appcast.xml", {.type = "application/rss+xml", .body = feedOf(items)});
  }
  /// The item of a version with the package "/Zolt.deb", by default with its length and signature.
  QByteArray packageItem(const QByteArray& version, const QByteArray& more = {}) const {
    return packageItem(version, more, QByteArray::number(package.size()), maker.signatureOf(package));
  }
  static QByteArray packageItem(const QByteArray& version, const QByteArray& more, const QByteArray& length,
                                const QByteArray& signature) {
    return "<item><sparkle:version>" + version + "</sparkle:version>" + more + "<enclosure url=\"Zolt.deb\" length=\"" +
           length + "\" sparkle:edSignature=\"" + signature + "\"/></item>";
  }
  void servePackage() { serve("/Zolt.deb", {.body = package}); }

  /// Every file below the download folder, hidden ones included.
  QStringList downloadedFiles() const {
    QStringList files;
    QDirIterator it(downloads, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      if (const QString file = it.next(); !file.endsWith(QLatin1String("/lock"))) files.append(file);
    }
    return files;
  }
  static QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  QTemporaryDir folder;
  const QString downloads = folder.filePath(QStringLiteral("cache/updates"));
  const SigningKey maker{1};
  QByteArray package = QByteArray("the package of Zolt ").repeated(20000);
  std::map<QString, HttpReply> replies;
  HttpServer server{[this](const QString& path) { return replyTo(path); }};
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  UpdateEnvironment environment = UpdateEnvironment::ofThisProgram();
  QDateTime now{QDate(2026, 6, 10), QTime(12, 0), Qt::UTC};
};

}  // namespace zolt::test
