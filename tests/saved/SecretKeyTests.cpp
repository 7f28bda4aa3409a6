#include "saved/SecretKey.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "history/TemporaryFolder.h"

namespace zolt {
namespace {

class SecretKeyTest : public testing::Test {
 protected:
  test::TemporaryFolder folder;
  std::string path = folder.path() + "/key";
};

TEST_F(SecretKeyTest, IsMadeOnceAndReadByTheUserOnly) {
  const auto made = keyFromFile(path);
  ASSERT_TRUE(made);
  EXPECT_NE(made.value(), BlockCipher::Key());
  struct stat facts {};
  ASSERT_EQ(stat(path.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0600U);
  const auto again = keyFromFile(path);
  ASSERT_TRUE(again);
  EXPECT_EQ(again.value(), made.value());
}

TEST_F(SecretKeyTest, IsAnotherInEachFile) {
  EXPECT_NE(keyFromFile(path).value(), keyFromFile(path + "2").value());
}

TEST_F(SecretKeyTest, IsRefusedWhenOthersCanReadIt) {
  ASSERT_TRUE(keyFromFile(path));
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  EXPECT_EQ(keyFromFile(path).reason(), "others can read the key");
}

TEST_F(SecretKeyTest, IsRefusedWhenItIsNotAWholeFile) {
  ASSERT_TRUE(keyFromFile(path));
  std::filesystem::resize_file(path, 31);
  EXPECT_EQ(keyFromFile(path).reason(), "the key is damaged");
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  EXPECT_EQ(keyFromFile(path).reason(), "the key is not a file of this user");
  EXPECT_EQ(keyFromFile(folder.path() + "/none/key").reason(), "No such file or directory");
}

TEST_F(SecretKeyTest, IsNotReadThroughALink) {
  ASSERT_TRUE(keyFromFile(path + ".real"));
  std::filesystem::create_symlink(path + ".real", path);
  EXPECT_FALSE(keyFromFile(path));
}

}  // namespace
}  // namespace zolt
