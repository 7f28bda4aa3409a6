#include "platform/Environment.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace zolt {
namespace {

// A temporary folder with the files to ask about.
class Folder {
 public:
  std::string path(const std::string& name) const { return m_folder.path().toStdString() + "/" + name; }

  std::string file(const std::string& name, mode_t mode) const {
    std::ofstream(path(name)) << "#!/bin/sh\n";
    chmod(path(name).c_str(), mode);
    return path(name);
  }

  std::string folder(const std::string& name, mode_t mode) const {
    std::filesystem::create_directory(path(name));
    chmod(path(name).c_str(), mode);
    return path(name);
  }

 private:
  QTemporaryDir m_folder;
};

TEST(IsExecutableFile, IsTrueForAFileThatTheUserMayExecute) {
  const Folder folder;
  EXPECT_TRUE(isExecutableFile(folder.file("program", 0700)));
}

TEST(IsExecutableFile, IsFalseForAFileWithoutExecutePermission) {
  const Folder folder;
  EXPECT_FALSE(isExecutableFile(folder.file("text", 0600)));
}

TEST(IsExecutableFile, IsFalseForAMissingFile) {
  const Folder folder;
  EXPECT_FALSE(isExecutableFile(folder.path("missing")));
  EXPECT_FALSE(isExecutableFile(""));
  EXPECT_FALSE(isExecutableFile(folder.file("program", 0700) + "/below"));
}

TEST(IsExecutableFile, FollowsALinkToItsTarget) {
  const Folder folder;
  std::filesystem::create_symlink(folder.file("program", 0700), folder.path("link"));
  std::filesystem::create_symlink(folder.path("missing"), folder.path("dangling"));
  EXPECT_TRUE(isExecutableFile(folder.path("link")));
  EXPECT_FALSE(isExecutableFile(folder.path("dangling")));
}

TEST(IsExecutableFile, IsTrueForADirectoryWithExecutePermission) {
  const Folder folder;
  EXPECT_TRUE(isExecutableFile(folder.folder("open", 0700)));
}

// Root may enter every directory, so this is asked as another user.
TEST(IsExecutableFile, IsFalseForADirectoryWithoutExecutePermission) {
  const auto askAsAnybody = [] {
    if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
    const Folder folder;
    const bool open = isExecutableFile(folder.folder("open", 0700));
    const bool closed = isExecutableFile(folder.folder("closed", 0600));
    _exit(open && !closed ? 0 : 1);
  };
  EXPECT_EXIT(askAsAnybody(), testing::ExitedWithCode(0), "");
}

TEST(ProcessEnvironment, HoldsTheVariablesOfThisProcess) {
  setenv("ZOLT_TEST_PLAIN", "value", 1);
  setenv("ZOLT_TEST_EQUALS", "a=b=c", 1);
  setenv("ZOLT_TEST_EMPTY", "", 1);
  unsetenv("ZOLT_TEST_ABSENT");
  const Environment environment = processEnvironment();
  EXPECT_EQ(environment.at("ZOLT_TEST_PLAIN"), "value");
  EXPECT_EQ(environment.at("ZOLT_TEST_EQUALS"), "a=b=c");
  EXPECT_EQ(environment.at("ZOLT_TEST_EMPTY"), "");
  EXPECT_FALSE(environment.contains("ZOLT_TEST_ABSENT"));
}

}  // namespace
}  // namespace zolt
