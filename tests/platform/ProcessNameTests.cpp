#include "platform/ProcessName.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/ChildProcess.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

TEST(ProcessName, IsTheProgramsFileName) {
  QTemporaryDir folder;
  // Longer than what the kernel keeps of a name.
  for (const char* name : {"short", "a-program-with-a-long-name", "exactly15chars!"}) {
    const QString path = folder.filePath(QLatin1String(name));
    ASSERT_TRUE(QFile::copy(QStringLiteral(ZOLT_TEST_CHILD), path));
    ChildProcess child({.executable = path.toStdString(), .arguments = {"wait"}, .environment = processEnvironment()});
    ASSERT_TRUE(child.launch());
    EXPECT_TRUE(test::waitFor([&] { return processName(child.pid()) == name; })) << processName(child.pid());
    child.sendSignal(9);
    child.waitUntilExit();
  }
}

TEST(ProcessName, IsEmptyForAProcessThatHasGone) {
  ChildProcess child({.executable = ZOLT_TEST_CHILD, .arguments = {"exit", "0"}, .environment = processEnvironment()});
  ASSERT_TRUE(child.launch());
  child.waitUntilExit();
  EXPECT_EQ(processName(child.pid()), "");
}

}  // namespace
}  // namespace zolt
