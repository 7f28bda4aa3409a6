#include "session/ShellIntegration.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using Args = std::vector<std::string>;

const Environment kEnvironment{{"HOME", "/home/me"}, {"PATH", "/bin"}};

Shell shellOf(const std::string& executable, Args args = {}) {
  return Shell{.name = "Shell", .executable = executable, .args = std::move(args), .icon = "terminal"};
}

ShellStart startOf(const std::string& executable, Args args = {}, const Environment& environment = kEnvironment) {
  return integratedStart(shellOf(executable, std::move(args)), environment, "/folder");
}

Environment with(Environment environment, const Environment& more) {
  for (const auto& [name, value] : more)
    environment[name] = value;
  return environment;
}

TEST(ShellIntegration, HasBashReadItsScriptInPosixMode) {
  EXPECT_EQ(startOf("/usr/bin/bash"),
            (ShellStart{.args = {"--posix", "-l"}, .environment = with(kEnvironment, {{"ENV", "/folder/zolt.bash"}})}));
  EXPECT_EQ(startOf("/usr/bin/bash", {"-i"}).args, (Args{"--posix", "-i"}));
}

TEST(ShellIntegration, HasZshReadItsScriptAsTheUsers) {
  EXPECT_EQ(startOf("/bin/zsh"), (ShellStart{.args = {}, .environment = with(kEnvironment, {{"ZDOTDIR", "/folder"}})}));
}

TEST(ShellIntegration, HasFishReadItsScriptAsAVendors) {
  EXPECT_EQ(startOf("/usr/bin/fish"),
            (ShellStart{.args = {}, .environment = with(kEnvironment, {{"XDG_DATA_DIRS", "/folder"}})}));
}

TEST(ShellIntegration, TellsTheScriptWhatTheUsersVariablesWere) {
  const auto environmentOf = [](const std::string& executable, const Environment& own) {
    return startOf(executable, {}, own).environment;
  };
  EXPECT_EQ(environmentOf("/usr/bin/bash", {{"ENV", "mine"}}),
            (Environment{{"ENV", "/folder/zolt.bash"}, {"ZOLT_ENV", "mine"}}));
  EXPECT_EQ(environmentOf("/bin/zsh", {{"ZDOTDIR", ""}}), (Environment{{"ZDOTDIR", "/folder"}, {"ZOLT_ZDOTDIR", ""}}));
  EXPECT_EQ(environmentOf("/bin/fish", {{"XDG_DATA_DIRS", "/a:/b"}}),
            (Environment{{"XDG_DATA_DIRS", "/folder:/a:/b"}, {"ZOLT_XDG_DATA_DIRS", "/a:/b"}}));
  EXPECT_EQ(environmentOf("/bin/zsh", {{"ZOLT_ZDOTDIR", "stale"}}), (Environment{{"ZDOTDIR", "/folder"}}));
}

TEST(ShellIntegration, TellsAShellByTheNameOfItsFile) {
  for (const char* name : {"bash", "/opt/bin/bash", "/bin/bash-5.2", "/bin/bash5", "/bin/zsh-5.9", "/usr/bin/fish3"}) {
    EXPECT_NE(startOf(name).environment, kEnvironment) << name;
  }
  for (const char* name :
       {"/bin/sh", "/bin/dash", "/bin/rbash", "/bin/zshenv", "/bin/bash-static", "/bin/nu", "/bash/", "/bin/ksh", ""}) {
    EXPECT_EQ(startOf(name), (ShellStart{.args = {}, .environment = kEnvironment})) << name;
  }
}

TEST(ShellIntegration, KeepsArgumentsOfALoginOrInteractiveShell) {
  for (const Args& args : {Args{"-l"}, Args{"-i"}, Args{"-i", "-l"}, Args{"--login"}, Args{"-il"}}) {
    EXPECT_EQ(startOf("/bin/zsh", args).args, args);
    EXPECT_EQ(startOf("/bin/fish", args).args, args);
    Args behind = args;
    behind.insert(behind.begin(), "--posix");
    EXPECT_EQ(startOf("/usr/bin/bash", args).args, behind);
  }
}

TEST(ShellIntegration, LeavesAShellAloneThatHasOtherArguments) {
  for (const char* executable : {"/usr/bin/bash", "/bin/zsh", "/bin/fish"}) {
    for (const Args& args :
         {Args{"-c", "ls"}, Args{"-l", "-c", "ls"}, Args{"script"}, Args{"--norc"}, Args{"--noprofile"}, Args{"-f"},
          Args{"--rcfile", "mine"}, Args{"--posix"}, Args{"--no-config"}, Args{"-o", "vi"}, Args{"-"}, Args{""}}) {
      EXPECT_EQ(startOf(executable, args), (ShellStart{.args = args, .environment = kEnvironment})) << executable;
    }
  }
}

TEST(ShellIntegration, LeavesBashAloneThatIsInPosixModeAnyway) {
  for (const char* name : {"POSIXLY_CORRECT", "SHELLOPTS"}) {
    const Environment environment = with(kEnvironment, {{name, "posix"}});
    EXPECT_EQ(startOf("/usr/bin/bash", {}, environment), (ShellStart{.args = {}, .environment = environment}));
    EXPECT_NE(startOf("/bin/zsh", {}, environment).environment, environment);
  }
}

TEST(ShellIntegration, LeavesAShellAloneThatWouldMisreadTheFolder) {
  const auto isLeftAlone = [](const char* executable, const std::string& folder) {
    return integratedStart(shellOf(executable), kEnvironment, folder).environment == kEnvironment;
  };
  for (const char* folder : {"/a$b", "/a`b", "/a\\b", "/a\"b"})
    EXPECT_TRUE(isLeftAlone("/usr/bin/bash", folder));
  EXPECT_FALSE(isLeftAlone("/usr/bin/bash", "/a b'\xC3\xA9:c"));
  EXPECT_TRUE(isLeftAlone("/bin/fish", "/a:b"));
  EXPECT_FALSE(isLeftAlone("/bin/fish", "/a $b"));
  for (const char* executable : {"/usr/bin/bash", "/bin/zsh", "/bin/fish"})
    EXPECT_TRUE(isLeftAlone(executable, ""));
}

TEST(ShellIntegration, LeavesTheBashOfMacOsAlone) {
#ifdef __APPLE__
  EXPECT_EQ(startOf("/bin/bash").environment, kEnvironment);
#else
  EXPECT_NE(startOf("/bin/bash").environment, kEnvironment);
#endif
}

// A folder to install to, and what is where there.
class ShellIntegrationInstallTest : public testing::Test {
 protected:
  std::string parent() const { return m_parent.path().toStdString() + "/cache/zolt"; }
  static std::filesystem::perms permissions(const std::string& path) {
    return std::filesystem::status(path).permissions();
  }
  static ino_t inode(const std::string& path) {
    struct stat facts {};
    EXPECT_EQ(stat(path.c_str(), &facts), 0) << path;
    return facts.st_ino;
  }

 private:
  QTemporaryDir m_parent;
};

TEST_F(ShellIntegrationInstallTest, WritesTheScriptsToAFolderOfTheUsersOwn) {
  const std::string folder = installShellIntegration(parent());
  ASSERT_TRUE(folder.starts_with(parent() + "/shell-integration-")) << folder;
  EXPECT_EQ(permissions(folder), std::filesystem::perms::owner_all);
  for (const char* name : {"/zolt.bash", "/.zshenv", "/fish/vendor_conf.d/zolt.fish"}) {
    EXPECT_TRUE(test::fileContent(folder + name).starts_with("# Zolt's shell integration")) << name;
  }
}

TEST_F(ShellIntegrationInstallTest, LeavesAloneWhatIsThereAlready) {
  const std::string folder = installShellIntegration(parent());
  const ino_t before = inode(folder + "/zolt.bash");
  EXPECT_EQ(installShellIntegration(parent()), folder);
  EXPECT_EQ(inode(folder + "/zolt.bash"), before);
}

TEST_F(ShellIntegrationInstallTest, ReplacesContentThatDiffersAndTakesRightsAway) {
  const std::string folder = installShellIntegration(parent());
  const std::string content = test::fileContent(folder + "/zolt.bash");
  const ino_t before = inode(folder + "/zolt.bash");
  std::ofstream(folder + "/zolt.bash") << "echo other";
  std::filesystem::remove(folder + "/.zshenv");
  std::filesystem::permissions(folder, std::filesystem::perms::all);
  EXPECT_EQ(installShellIntegration(parent()), folder);
  EXPECT_EQ(test::fileContent(folder + "/zolt.bash"), content);
  EXPECT_NE(inode(folder + "/zolt.bash"), before);
  EXPECT_NE(test::fileContent(folder + "/.zshenv"), "");
  EXPECT_EQ(permissions(folder), std::filesystem::perms::owner_all);
}

TEST_F(ShellIntegrationInstallTest, ReturnsNothingWhereItCannotWrite) {
  EXPECT_EQ(installShellIntegration(""), "");
  const std::string folder = installShellIntegration(parent());
  std::filesystem::remove_all(folder);
  std::ofstream(folder) << "a file is in the way";
  EXPECT_EQ(installShellIntegration(parent()), "");
  std::filesystem::remove(folder);
  std::filesystem::create_directories(folder + "/zolt.bash");
  EXPECT_EQ(installShellIntegration(parent()), "");
}

TEST_F(ShellIntegrationInstallTest, TrustsNoLink) {
  const std::string folder = installShellIntegration(parent());
  std::filesystem::rename(folder, parent() + "/elsewhere");
  std::filesystem::create_directory_symlink(parent() + "/elsewhere", folder);
  EXPECT_EQ(installShellIntegration(parent()), "");
}

}  // namespace
}  // namespace zolt
