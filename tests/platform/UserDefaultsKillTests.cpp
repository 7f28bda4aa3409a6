// The file on the disk after a process was killed while saving, and after two saved at once.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <chrono>
#include <csignal>
#include <thread>

#include "platform/UserDefaults.h"

namespace zolt {
namespace {

constexpr int kKills = 200;

// Saves eight keys of one generation again and again; never returns.
[[noreturn]] void saveForever(const std::string& file, const std::string& prefix, int generation) {
  UserDefaults defaults(file);
  for (;; ++generation) {
    for (int key = 0; key < 8; ++key) {
      defaults.setInteger(prefix + std::to_string(key), generation);
    }
    defaults.synchronize();
  }
}

pid_t startSaving(const std::string& file, const std::string& prefix, int generation) {
  const pid_t child = fork();
  if (child == 0) saveForever(file, prefix, generation);
  return child;
}

void killAt(pid_t child, std::chrono::microseconds after) {
  std::this_thread::sleep_for(after);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
}

TEST(UserDefaultsKill, LeavesACompleteFileOfOneGenerationEachTime) {
  QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("zolt.ini")).toStdString();
  std::int64_t last = 0;
  std::uint32_t random = 1;
  int advanced = 0;
  for (int round = 0; round < kKills; ++round) {
    const pid_t child = startSaving(file, "key", static_cast<int>(last) + 1);
    random = random * 1664525U + 1013904223U;
    killAt(child, std::chrono::microseconds(random % 60000));
    testing::internal::CaptureStderr();
    const UserDefaults defaults(file);
    ASSERT_EQ(testing::internal::GetCapturedStderr(), "") << "readable after kill " << round;
    const std::int64_t generation = defaults.integerForKey("key0");
    ASSERT_GE(generation, last);
    for (int key = 1; key < 8 && generation > 0; ++key) {
      ASSERT_EQ(defaults.integerForKey("key" + std::to_string(key)), generation) << "kill " << round;
    }
    if (generation > last) ++advanced;
    last = generation;
  }
  EXPECT_GT(advanced, kKills / 4) << "the kills hit during saves, not before";
}

TEST(UserDefaultsKill, LosesNoKeyIfTwoProcessesSaveAtOnce) {
  QTemporaryDir folder;
  const std::string file = folder.filePath(QStringLiteral("zolt.ini")).toStdString();
  const pid_t one = startSaving(file, "one", 1);
  const pid_t two = startSaving(file, "two", 1);
  // Neither waits long to save, although the other never stops.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  const auto bothSaved = [&file] {
    const UserDefaults now(file);
    return now.integerForKey("one0") > 1 && now.integerForKey("two0") > 1;
  };
  while (!bothSaved() && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  killAt(one, std::chrono::microseconds(0));
  killAt(two, std::chrono::microseconds(0));
  const UserDefaults defaults(file);
  for (const char* prefix : {"one", "two"}) {
    EXPECT_GT(defaults.integerForKey(std::string(prefix) + "0"), 1);
    for (int key = 1; key < 8; ++key) {
      EXPECT_EQ(defaults.integerForKey(prefix + std::to_string(key)),
                defaults.integerForKey(std::string(prefix) + "0"));
    }
  }
}

}  // namespace
}  // namespace zolt
