#include "platform/ProcessFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <filesystem>

#include "platform/ChildProcess.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

TEST(ProcessFolder, IsWhereTheProcessWorks) {
  EXPECT_EQ(processFolder(getpid()), std::filesystem::current_path().string());
  const QTemporaryDir folder;
  const std::string path = std::filesystem::canonical(folder.path().toStdString()).string();
  ChildProcess child({.executable = "/bin/sh",
                      .arguments = {"-c", "cd '" + path + "' && exec '" ZOLT_TEST_CHILD "' wait"},
                      .environment = processEnvironment()});
  ASSERT_TRUE(child.launch());
  EXPECT_TRUE(test::waitFor([&] { return processFolder(child.pid()) == path; })) << processFolder(child.pid());
  child.sendSignal(9);
  child.waitUntilExit();
}

TEST(ProcessFolder, IsEmptyForAProcessThatHasGone) {
  ChildProcess child({.executable = ZOLT_TEST_CHILD, .arguments = {"exit", "0"}, .environment = processEnvironment()});
  ASSERT_TRUE(child.launch());
  child.waitUntilExit();
  EXPECT_EQ(processFolder(child.pid()), "");
}

TEST(ProcessFolder, IsEmptyForAFolderThatHasGone) {
  auto folder = std::make_unique<QTemporaryDir>();
  ChildProcess child(
      {.executable = "/bin/sh",
       .arguments = {"-c", "cd '" + folder->path().toStdString() + "' && exec '" ZOLT_TEST_CHILD "' wait"},
       .environment = processEnvironment()});
  ASSERT_TRUE(child.launch());
  const std::string before = std::filesystem::canonical(folder->path().toStdString()).string();
  ASSERT_TRUE(test::waitFor([&] { return processFolder(child.pid()) == before; }));
  folder.reset();
  EXPECT_EQ(processFolder(child.pid()), "");
  child.sendSignal(9);
  child.waitUntilExit();
}

}  // namespace
}  // namespace zolt
