#include "saved/TerminalFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "history/TemporaryFolder.h"
#include "saved/SealedFile.h"
#include "vt/Terminal.h"
#include "vt/TerminalPicture.h"

namespace zolt {
namespace {

constexpr BlockCipher::Key kKey{7};
constexpr TerminalSize kSize{.rows = 5, .columns = 30};

class TerminalFileTest : public testing::Test {
 protected:
  TerminalFileTest() {
    std::string text;
    for (int i = 0; i < 20'000; ++i) {
      text += "\033[1mline\033[m ";
      text += std::to_string(i);
      text += "\r\n";
    }
    terminal.feed(text);
  }
  std::string restoredLines() const {
    auto stored = readTerminalFile(path, kKey);
    if (!stored) return stored.reason();
    const auto restored = vt::Terminal::restored(std::move(stored.value()), {});
    return restored ? vt::test::linesOf(restored.value()->screen()) : restored.reason();
  }
  void flip(std::uintmax_t at) const {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekg(static_cast<std::streamoff>(at));
    const int byte = file.get();
    file.seekp(static_cast<std::streamoff>(at));
    file.put(static_cast<char>(byte ^ 1));
  }

  test::TemporaryFolder folder;
  std::string path = folder.path() + "/terminal";
  vt::Terminal terminal{kSize};
};

TEST_F(TerminalFileTest, GivesTheTerminalBack) {
  ASSERT_EQ(writeTerminalFile(path, kKey, terminal.record()), 0);
  EXPECT_EQ(restoredLines(), vt::test::linesOf(terminal.screen()));
}

TEST_F(TerminalFileTest, IsSmall) {
  ASSERT_EQ(writeTerminalFile(path, kKey, terminal.record()), 0);
  EXPECT_LT(std::filesystem::file_size(path), 100'000U);
}

TEST_F(TerminalFileTest, CostsWhatADamagedPartHeld) {
  ASSERT_EQ(writeTerminalFile(path, kKey, terminal.record()), 0);
  flip(std::filesystem::file_size(path) / 2);
  const std::string lines = restoredLines();
  EXPECT_NE(lines.find(kHistoryLostNotice), std::string::npos);
  EXPECT_NE(lines.find("line 1\n"), std::string::npos);
  EXPECT_NE(lines.find("line 19999"), std::string::npos);
}

TEST_F(TerminalFileTest, KeepsTheScreenWhenTheTableOfTheHistoryIsDamaged) {
  SealedFileWriter file(path, kKey);
  file.add(terminal.saved());
  file.add("no summaries");
  ASSERT_EQ(file.finish(), 0);
  const std::string lines = restoredLines();
  EXPECT_EQ(lines.find("line 1\n"), std::string::npos);
  EXPECT_NE(lines.find("line 19999"), std::string::npos);
}

TEST_F(TerminalFileTest, IsRefusedWithoutAScreen) {
  ASSERT_EQ(writeTerminalFile(path, kKey, terminal.record()), 0);
  flip(40);  // in the state, which is the first record
  EXPECT_EQ(restoredLines(), "the file is damaged");
  SealedFileWriter(path, kKey).finish();
  EXPECT_EQ(restoredLines(), "the file is damaged");
}

}  // namespace
}  // namespace zolt
