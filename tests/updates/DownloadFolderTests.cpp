#include "updates/DownloadFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utime.h>

#include <QDir>
#include <QTemporaryDir>

#include "updates/UpdateError.h"

namespace zolt {
namespace {

class DownloadFolderTest : public testing::Test {
 protected:
  QStringList entries() const {
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
  static unsigned modeOf(const QString& file) {
    struct stat facts {};
    EXPECT_EQ(::stat(QFile::encodeName(file).constData(), &facts), 0);
    return facts.st_mode & 07777U;
  }
  void touch(const QString& name, int daysAgo = 0) const {
    QDir().mkpath(QFileInfo(path + name).path());
    QFile file(path + name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
    file.close();
    const std::time_t time = std::time(nullptr) - daysAgo * 24 * 60 * 60 - 60;
    const utimbuf times{.actime = time, .modtime = time};
    ASSERT_EQ(::utime(QFile::encodeName(path + name).constData(), &times), 0);
  }
  static void write(const Result<QFile*>& file, const char* content) {
    ASSERT_TRUE(file);
    ASSERT_GT(file.value()->write(content), 0);
  }

  QTemporaryDir temporary;
  const QString path = temporary.filePath(QStringLiteral("a/updates"));
};

TEST_F(DownloadFolderTest, NothingIsCreatedBeforeItIsNeeded) {
  DownloadFolder folder(path);
  folder.removeLeftovers();
  EXPECT_FALSE(QFile::exists(path));
}

TEST_F(DownloadFolderTest, OnlyTheUserCanAccessIt) {
  QDir().mkpath(path);
  ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), 0755), 0);
  DownloadFolder folder(path);
  const Result<QFile*> file = folder.begin();
  ASSERT_TRUE(file);
  EXPECT_EQ(modeOf(path), 0700U);
  EXPECT_EQ(modeOf(QFileInfo(file.value()->fileName()).path()), 0700U);
}

TEST_F(DownloadFolderTest, ASymbolicLinkInItsPlaceIsRejected) {
  QDir().mkpath(temporary.filePath(QStringLiteral("a")));
  QDir().mkpath(temporary.filePath(QStringLiteral("elsewhere")));
  ASSERT_TRUE(QFile::link(temporary.filePath(QStringLiteral("elsewhere")), path));
  DownloadFolder folder(path);
  const Result<QFile*> file = folder.begin();
  ASSERT_FALSE(file);
  EXPECT_EQ(file.reason(), sentenceOf(UpdateError::PackageNotSaved).toStdString());
}

TEST_F(DownloadFolderTest, AKeptPackageHasItsFinalNameAndOutlivesTheFolder) {
  QString kept;
  {
    DownloadFolder folder(path);
    write(folder.begin(), "content");
    const Result<QString> result = folder.keep(QStringLiteral("Zolt.deb"));
    ASSERT_TRUE(result);
    kept = result.value();
    folder.discard();
  }
  EXPECT_EQ(kept, path + QStringLiteral("/Zolt.deb"));
  EXPECT_EQ(entries(), QStringList{QStringLiteral("Zolt.deb")});
  QFile file(kept);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), "content");
}

TEST_F(DownloadFolderTest, NothingElseStaysBehind) {
  {
    DownloadFolder folder(path);
    write(folder.begin(), "one");
    write(folder.begin(), "two");
    folder.discard();
    write(folder.begin(), "three");
  }
  EXPECT_FALSE(QFile::exists(path));
}

TEST_F(DownloadFolderTest, APackageThatCannotBeRenamedIsRemoved) {
  DownloadFolder folder(path);
  write(folder.begin(), "content");
  QDir().mkpath(path + QStringLiteral("/Zolt.deb"));
  EXPECT_FALSE(folder.keep(QStringLiteral("Zolt.deb")));
  for (const QString& entry : entries()) {
    EXPECT_TRUE(QDir(path + QLatin1Char('/') + entry).entryList({QStringLiteral("*.part")}, QDir::Files).isEmpty());
  }
}

TEST_F(DownloadFolderTest, LeftoversOfEarlierRunsAreRemovedAndFreshPackagesStay) {
  touch(QStringLiteral("/run-abcdef/package.part"));
  touch(QStringLiteral("/run-abcdef/lock"));
  touch(QStringLiteral("/run-without/.hidden"));
  touch(QStringLiteral("/old.deb"), 2);
  touch(QStringLiteral("/.old"), 2);
  touch(QStringLiteral("/fresh.deb"));
  ASSERT_TRUE(QFile::link(QStringLiteral("/etc"), path + QStringLiteral("/link")));
  DownloadFolder(path).removeLeftovers();
  EXPECT_EQ(entries(), QStringList{QStringLiteral("fresh.deb")});
  EXPECT_TRUE(QFile::exists(QStringLiteral("/etc/passwd")));
}

TEST_F(DownloadFolderTest, TheDownloadsOfAnotherRunningProgramStayUntilItIsKilled) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    DownloadFolder folder(path);
    const bool began = static_cast<bool>(folder.begin());
    const ssize_t written = ::write(ready[1], began ? "y" : "n", 1);
    while (written == 1) {
      ::pause();
    }
    ::_exit(1);
  }
  ::close(ready[1]);
  char answer = 'n';
  ASSERT_EQ(::read(ready[0], &answer, 1), 1);
  ::close(ready[0]);
  ASSERT_EQ(answer, 'y');
  DownloadFolder folder(path);
  folder.removeLeftovers();
  EXPECT_EQ(entries().size(), 1);
  ASSERT_EQ(::kill(child, SIGKILL), 0);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_EQ(entries().size(), 1);
  folder.removeLeftovers();
  EXPECT_FALSE(QFile::exists(path));
}

}  // namespace
}  // namespace zolt
