#include "platform/ReplacementFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <csignal>
#include <functional>

#ifdef __linux__
#include <sched.h>
#include <sys/mount.h>
#endif

namespace zolt {
namespace {

constexpr uid_t kNobody = 65534;

class ReplacementFileTest : public testing::Test {
 protected:
  std::string path(const char* name) const { return folder.filePath(QString::fromLatin1(name)).toStdString(); }
  static std::string content(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(none)";
  }
  static void put(const std::string& path, const char* content) {
    QFile file(QString::fromStdString(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  static unsigned permissions(const std::string& path) {
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 ? facts.st_mode & 0777U : 0;
  }
  QStringList names() const {
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }

  QTemporaryDir folder;
};

TEST_F(ReplacementFileTest, AppearsOnlyWhenComplete) {
  ReplacementFile file(path("new"));
  file.write("one ");
  file.write("two");
  EXPECT_EQ(content(path("new")), "(none)");
  file.sync();
  file.replace();
  EXPECT_EQ(file.error(), 0);
  EXPECT_EQ(content(path("new")), "one two");
  EXPECT_EQ(names(), QStringList(QStringLiteral("new")));
}

TEST_F(ReplacementFileTest, ReplacesTheOtherFileAtomically) {
  put(path("file"), "what was there before");
  ReplacementFile file(path("file"));
  file.write("new");
  EXPECT_EQ(content(path("file")), "what was there before");
  file.replace();
  EXPECT_EQ(content(path("file")), "new");
}

TEST_F(ReplacementFileTest, LeavesNothingBehindIfAbandoned) {
  put(path("file"), "before");
  {
    ReplacementFile file(path("file"));
    file.write("new");
    EXPECT_EQ(names().size(), 2);
    EXPECT_TRUE(QFile::exists(QString::fromStdString(file.temporaryPath())));
  }
  EXPECT_EQ(content(path("file")), "before");
  EXPECT_EQ(names(), QStringList(QStringLiteral("file")));
}

TEST_F(ReplacementFileTest, HasThePermissionsOfTheReplacedOrOfANewFile) {
  const mode_t mask = umask(0027);
  ReplacementFile fresh(path("fresh"));
  umask(mask);
  fresh.replace();
  EXPECT_EQ(permissions(path("fresh")), 0640U);
  put(path("other"), "");
  ASSERT_EQ(chmod(path("other").c_str(), 0604), 0);
  ReplacementFile other(path("other"));
  other.replace();
  EXPECT_EQ(permissions(path("other")), 0604U);
}

TEST_F(ReplacementFileTest, FollowsALink) {
  put(path("file"), "before");
  ASSERT_EQ(symlink(path("file").c_str(), path("link").c_str()), 0);
  ReplacementFile file(path("link"));
  file.write("new");
  file.replace();
  EXPECT_EQ(content(path("file")), "new");
  EXPECT_TRUE(QFileInfo(QString::fromStdString(path("link"))).isSymLink());
}

TEST_F(ReplacementFileTest, MayExistTwiceForOneName) {
  ReplacementFile one(path("file"));
  ReplacementFile two(path("file"));
  one.write("one");
  two.write("two");
  two.replace();
  one.replace();
  EXPECT_EQ(content(path("file")), "one");
  EXPECT_EQ(names(), QStringList(QStringLiteral("file")));
}

TEST_F(ReplacementFileTest, ReportsWhyItCannotBeCreated) {
  EXPECT_EQ(ReplacementFile(folder.path().toStdString()).error(), EISDIR);
  EXPECT_EQ(ReplacementFile(path("no/such/folder")).error(), ENOENT);
  EXPECT_EQ(ReplacementFile(path(std::string(256, 'x').c_str())).error(), ENAMETOOLONG);
  ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(ReplacementFile(path("pipe")).error(), EEXIST);
  EXPECT_EQ(ReplacementFile("/dev/null").error(), EEXIST);
  EXPECT_EQ(names(), QStringList(QStringLiteral("pipe")));
}

TEST_F(ReplacementFileTest, ReportsThatItsFolderIsGone) {
  ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("folder")));
  ReplacementFile file(path("folder/file"));
  file.write("text");
  ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("folder"))).removeRecursively());
  file.replace();
  EXPECT_EQ(file.error(), ENOENT);
}

TEST_F(ReplacementFileTest, LeavesNothingBehindIfItsNameIsTakenByADirectory) {
  {
    ReplacementFile file(path("file"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("file")));
    file.replace();
    EXPECT_EQ(file.error(), EISDIR);
  }
  EXPECT_EQ(names(), QStringList(QStringLiteral("file")));
}

TEST_F(ReplacementFileTest, SkipsTheTemporaryFilesOfOtherProcesses) {
  const std::string used = ReplacementFile(path("file")).temporaryPath();
  const std::size_t number = used.rfind('-') + 1;
  put(used.substr(0, number) + std::to_string(std::stoi(used.substr(number)) + 1), "left behind");
  ReplacementFile file(path("file"));
  file.replace();
  EXPECT_EQ(file.error(), 0);
  EXPECT_EQ(content(path("file")), "");
}

// The result of `action`, at most 255, run in a child process whose limits and user it may change.
int inAChild(const std::function<int()>& action) {
  const pid_t child = fork();
  if (child == 0) _exit(action());
  int status = 0;
  if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

TEST_F(ReplacementFileTest, ReportsMissingPermission) {
  put(path("file"), "before");
  ASSERT_EQ(chmod(path("file").c_str(), 0444), 0);
  const auto errorOf = [this](const char* name, mode_t permissionsOfFolder) {
    return inAChild([&] {
      chmod(folder.path().toStdString().c_str(), permissionsOfFolder);
      if (geteuid() == 0 && setuid(kNobody) != 0) return 0;
      return ReplacementFile(path(name)).error();
    });
  };
  EXPECT_EQ(errorOf("new", 0555), EACCES);
  EXPECT_EQ(errorOf("new", 0777), 0);
  EXPECT_EQ(errorOf("file", 0777), EACCES) << "a file that is not writable is kept";
  EXPECT_EQ(content(path("file")), "before");
}

TEST_F(ReplacementFileTest, ReportsThatItIsTooLarge) {
  const int error = inAChild([this] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{.rlim_cur = 100000, .rlim_max = 100000};
    setrlimit(RLIMIT_FSIZE, &limit);
    ReplacementFile file(path("file"));
    file.write(std::string(200000, 'x'));
    file.replace();
    return file.error();
  });
  EXPECT_EQ(error, EFBIG);
  EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("file"))));
}

#ifdef __linux__
constexpr int kNoMount = 200;

bool write(const char* path, const std::string& text) {
  const Descriptor file(open(path, O_WRONLY | O_CLOEXEC));
  return ::write(file.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

// Mounts a private disk of 64 KiB on `folder`, for this process only.
bool mountTinyDisk(const std::string& folder) {
  const std::string user = "0 " + std::to_string(geteuid()) + " 1";
  const std::string group = "0 " + std::to_string(getegid()) + " 1";
  return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && write("/proc/self/uid_map", user) &&
         write("/proc/self/setgroups", "deny") && write("/proc/self/gid_map", group) &&
         mount("none", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
}

TEST_F(ReplacementFileTest, ReportsThatTheDiskIsFull) {
  const int error = inAChild([this] {
    if (!mountTinyDisk(folder.path().toStdString())) return kNoMount;
    put(path("file"), "before");
    int found = 0;
    {
      ReplacementFile file(path("file"));
      file.write(std::string(100000, 'x'));
      file.replace();
      found = file.error();
    }
    return names().size() == 1 && content(path("file")) == "before" ? found : 0;
  });
  if (error == kNoMount) GTEST_SKIP() << "no disk can be mounted here";
  EXPECT_EQ(error, ENOSPC);
}
#endif

}  // namespace
}  // namespace zolt
