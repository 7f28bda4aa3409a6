#include "saved/SealedFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <fstream>
#include <random>
#include <sstream>

#include "history/TemporaryFolder.h"

namespace zolt {
namespace {

constexpr BlockCipher::Key kKey{1, 2, 3};

class SealedFileTest : public testing::Test {
 protected:
  void write(const std::vector<std::string>& records, const BlockCipher::Key& key = kKey) const {
    SealedFileWriter file(path, key);
    for (const std::string& record : records) {
      file.add(record);
    }
    ASSERT_EQ(file.finish(), 0);
  }
  std::string bytes() const {
    std::stringstream all;
    all << std::ifstream(path).rdbuf();
    return all.str();
  }
  void setBytes(const std::string& content) const { std::ofstream(path, std::ios::trunc) << content; }
  std::string reason(const BlockCipher::Key& key = kKey) const {
    const auto file = SealedFileReader::open(path, key);
    return file ? "none" : file.reason();
  }
  /// The records, with "?" for one that is damaged; the reason if there are none.
  std::vector<std::string> records() const {
    const auto file = SealedFileReader::open(path, kKey);
    if (!file) return {file.reason()};
    std::vector<std::string> all;
    for (std::size_t i = 0; i < file.value().count(); ++i) {
      all.push_back(file.value().record(i).value_or("?"));
    }
    return all;
  }

  test::TemporaryFolder folder;
  std::string path = folder.path() + "/sealed";
};

TEST_F(SealedFileTest, GivesItsRecordsBack) {
  const std::vector<std::string> all{"one", "", std::string(100'000, 'x'), std::string("\0\n", 2)};
  write(all);
  EXPECT_EQ(records(), all);
}

TEST_F(SealedFileTest, MayHaveNoRecords) {
  write({});
  EXPECT_EQ(records(), std::vector<std::string>());
}

TEST_F(SealedFileTest, ShowsNothingOfItsRecords) {
  write({std::string(1000, 'x')});
  EXPECT_EQ(bytes().find("xx"), std::string::npos);
}

TEST_F(SealedFileTest, HasAKeyOfItsOwn) {
  write({"the same"});
  const std::string once = bytes();
  write({"the same"});
  EXPECT_NE(bytes().substr(40), once.substr(40));
}

TEST_F(SealedFileTest, OpensWithItsKeyOnly) {
  write({"one"});
  EXPECT_EQ(reason({9}), "the file is damaged, or encrypted with another key");
}

TEST_F(SealedFileTest, SaysWhyItCannotBeRead) {
  EXPECT_EQ(reason(), "No such file or directory");
  ASSERT_EQ(mkdir(path.c_str(), 0700), 0);
  EXPECT_EQ(reason(), "it is not a file");
  ASSERT_EQ(rmdir(path.c_str()), 0);
  setBytes("short");
  EXPECT_EQ(reason(), "the file is too short");
  setBytes(std::string(200, 'x'));
  EXPECT_EQ(reason(), "it is not a file of Zolt's");
  write({"one"});
  std::string next = bytes();
  ++next[14];
  setBytes(next);
  EXPECT_EQ(reason(), "another version of Zolt saved it");
}

TEST_F(SealedFileTest, DoesNotFollowALink) {
  write({"one"});
  ASSERT_EQ(rename(path.c_str(), (path + ".real").c_str()), 0);
  ASSERT_EQ(symlink((path + ".real").c_str(), path.c_str()), 0);
  EXPECT_NE(reason(), "none");
}

TEST_F(SealedFileTest, DoesNotWaitForAPipe) {
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(reason(), "it is not a file");
}

TEST_F(SealedFileTest, LosesOnlyTheRecordThatIsDamaged) {
  write({"the first", "the second", "the third"});
  std::string damaged = bytes();
  // After the header, each record has sixteen bytes more than its text.
  damaged[15 + 16 + 25 + 3] ^= 1;
  setBytes(damaged);
  EXPECT_EQ(records(), (std::vector<std::string>{"the first", "?", "the third"}));
}

TEST_F(SealedFileTest, NoticesRecordsThatChangedPlaces) {
  write({"one", "two"});
  std::string swapped = bytes();
  const std::string first = swapped.substr(31, 19);
  swapped.replace(31, 19, swapped.substr(50, 19));
  swapped.replace(50, 19, first);
  setBytes(swapped);
  EXPECT_EQ(records(), (std::vector<std::string>{"?", "?"}));
}

TEST_F(SealedFileTest, IsRefusedWhenItIsCutOff) {
  write({"one", "two"});
  const std::string whole = bytes();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    setBytes(whole.substr(0, size));
    EXPECT_NE(reason(), "none") << size;
  }
}

TEST_F(SealedFileTest, GivesNothingButItsRecordsFromDamagedBytes) {
  write({"one", "two", std::string(300, 'x')});
  const std::string whole = bytes();
  std::mt19937 random(1);
  for (int i = 0; i < 2000; ++i) {
    std::string damaged = whole;
    for (unsigned j = 0; j <= random() % 4; ++j) {
      damaged[random() % damaged.size()] = static_cast<char>(random());
    }
    setBytes(damaged);
    const auto file = SealedFileReader::open(path, kKey);
    if (!file) continue;
    ASSERT_EQ(file.value().count(), 3U);
    const std::string first = file.value().record(0).value_or("one");
    ASSERT_EQ(first, "one");
  }
}

TEST_F(SealedFileTest, KeepsTheOldFileIfTheNewOneCannotBeWritten) {
  write({"old"});
  {
    SealedFileWriter unfinished(path, kKey);
    unfinished.add("new");
  }
  EXPECT_EQ(records(), std::vector<std::string>{"old"});
  SealedFileWriter nowhere(folder.path() + "/none/sealed", kKey);
  nowhere.add("new");
  EXPECT_EQ(nowhere.finish(), ENOENT);
}

}  // namespace
}  // namespace zolt
