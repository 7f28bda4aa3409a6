#include "platform/UserDefaults.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <fstream>
#include <limits>
#include <vector>

#include "platform/StoredString.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

class UserDefaultsTest : public testing::Test {
 protected:
  void write(const std::string& content) { std::ofstream(file, std::ios::binary) << content; }
  std::string content() const { return test::fileContent(file); }
  std::vector<std::string> files() const {
    std::vector<std::string> names;
    const QStringList entries = QDir(folder.path()).entryList(QDir::Files, QDir::Name);
    for (const QString& name : entries) {
      names.push_back(name.toStdString());
    }
    return names;
  }

  QTemporaryDir folder;
  std::string file = folder.filePath(QStringLiteral("zolt.ini")).toStdString();
};

TEST_F(UserDefaultsTest, ReadsNothingFalseAndZeroForAbsentKeys) {
  const UserDefaults defaults(file);
  EXPECT_EQ(defaults.stringForKey("a"), std::nullopt);
  EXPECT_EQ(defaults.doubleForKey("a"), 0.0);
  EXPECT_EQ(defaults.integerForKey("a"), 0);
  EXPECT_FALSE(defaults.boolForKey("a"));
}

TEST_F(UserDefaultsTest, ReadsBackWhatWasWrittenAfterARestart) {
  {
    UserDefaults defaults(file);
    defaults.setString("text", "a, \"b\"; c=d\n\té日本 ");
    defaults.setString("empty", "");
    defaults.setString("at", "@Variant(x)");
    defaults.setDouble("double", 0.1);
    defaults.setDouble("large", 1e300);
    defaults.setInteger("integer", std::numeric_limits<std::int64_t>::min());
    defaults.setBool("yes", true);
    defaults.setBool("no", false);
  }
  const UserDefaults defaults(file);
  EXPECT_EQ(defaults.stringForKey("text"), "a, \"b\"; c=d\n\té日本 ");
  EXPECT_EQ(defaults.stringForKey("empty"), "");
  EXPECT_EQ(defaults.stringForKey("at"), "@Variant(x)");
  EXPECT_EQ(defaults.doubleForKey("double"), 0.1);
  EXPECT_EQ(defaults.doubleForKey("large"), 1e300);
  EXPECT_EQ(defaults.integerForKey("integer"), std::numeric_limits<std::int64_t>::min());
  EXPECT_TRUE(defaults.boolForKey("yes"));
  EXPECT_FALSE(defaults.boolForKey("no"));
}

TEST_F(UserDefaultsTest, IsAHumanReadableFileWithAccessForItsOwnerOnly) {
  {
    UserDefaults defaults(file);
    defaults.setDouble("fontSize", 14);
    defaults.setString("theme", "Dark");
    defaults.setBool("cursorBlink", true);
  }
  EXPECT_EQ(content(), "[General]\ncursorBlink=true\nfontSize=14\ntheme=Dark\n");
  struct stat status {};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0077, 0U);
}

struct Reading {
  const char* stored;
  double number;
  std::int64_t integer;
  bool flag;
};

class TypedReads : public UserDefaultsTest, public testing::WithParamInterface<Reading> {};

TEST_P(TypedReads, ConvertTheStoredText) {
  UserDefaults defaults(file);
  defaults.setString("key", GetParam().stored);
  EXPECT_EQ(defaults.doubleForKey("key"), GetParam().number);
  EXPECT_EQ(defaults.integerForKey("key"), GetParam().integer);
  EXPECT_EQ(defaults.boolForKey("key"), GetParam().flag);
}

constexpr auto kMax = std::numeric_limits<std::int64_t>::max();
constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    UserDefaults, TypedReads,
    testing::Values(Reading{"14", 14, 14, true}, Reading{"3.5", 3.5, 3, true}, Reading{"-5", -5, -5, true},
                    Reading{"-0.9", -0.9, 0, true}, Reading{"+7", 7, 7, true}, Reading{"  12px", 12, 12, true},
                    Reading{"1e3", 1000, 1000, true}, Reading{".5", 0.5, 0, true}, Reading{"0", 0, 0, false},
                    Reading{"0.0", 0, 0, false}, Reading{"", 0, 0, false}, Reading{"large", 0, 0, false},
                    Reading{"-", 0, 0, false}, Reading{".", 0, 0, false}, Reading{"inf", 0, 0, false},
                    Reading{"nan", 0, 0, false}, Reading{"0x10", 0, 0, false}, Reading{"YES", 0, 0, true},
                    Reading{"yes", 0, 0, true}, Reading{"true", 0, 0, true}, Reading{"TRUE", 0, 0, true},
                    Reading{"1", 1, 1, true}, Reading{"NO", 0, 0, false}, Reading{"false", 0, 0, false},
                    Reading{"on", 0, 0, false}, Reading{"9223372036854775807", 0x1p63, kMax, true},
                    Reading{"9223372036854775808", 0x1p63, kMax, true},
                    Reading{"-9223372036854775809", -0x1p63, kLeast, true}, Reading{"1e999", kInfinity, kMax, true},
                    Reading{"-1e999", -kInfinity, kLeast, true}, Reading{"1e-999", 0, 0, false}));

TEST_F(UserDefaultsTest, ReadsNumbersAndFlagsAsTextToo) {
  UserDefaults defaults(file);
  defaults.setDouble("number", 3.5);
  defaults.setBool("flag", true);
  EXPECT_EQ(defaults.stringForKey("number"), "3.5");
  EXPECT_EQ(defaults.stringForKey("flag"), "true");
}

TEST_F(UserDefaultsTest, ReadsAHandWrittenListAsItsText) {
  write("[General]\nstartupCommand=one, two\n");
  EXPECT_EQ(UserDefaults(file).stringForKey("startupCommand"), "one, two");
}

TEST_F(UserDefaultsTest, AnnouncesEveryChangeAfterItHasBeenMade) {
  UserDefaults defaults(file);
  std::vector<std::string> heard;
  QObject::connect(&defaults, &UserDefaults::changed, &defaults, [&](const std::string& key) {
    heard.push_back(key + "=" + defaults.stringForKey(key).value_or("(none)"));
  });
  defaults.setString("a", "1");
  defaults.setString("a", "1");
  defaults.setBool("b", true);
  defaults.removeObject("a");
  EXPECT_EQ(heard, (std::vector<std::string>{"a=1", "a=1", "b=true", "a=(none)"}));
  defaults.synchronize();
  EXPECT_EQ(heard.size(), 4U) << "writing changes nothing";
}

TEST_F(UserDefaultsTest, WritesSoonAfterAChange) {
  UserDefaults defaults(file);
  defaults.setString("a", "1");
  EXPECT_TRUE(test::waitFor([&] { return content() == "[General]\na=1\n"; }));
  defaults.setString("a", "2");
  defaults.removeObject("a");
  defaults.setString("b", "3");
  EXPECT_TRUE(test::waitFor([&] { return content() == "[General]\nb=3\n"; }));
}

TEST_F(UserDefaultsTest, CreatesItsFolder) {
  file = folder.filePath(QStringLiteral("a/b/zolt.ini")).toStdString();
  UserDefaults defaults(file);
  defaults.setString("a", "1");
  defaults.synchronize();
  EXPECT_EQ(content(), "[General]\na=1\n");
}

TEST_F(UserDefaultsTest, RemovesOldTemporaryFilesOfKilledSaves) {
  for (const char* name : {".AbCdEf", ".GhIjKl"}) {
    std::ofstream(file + name) << "half a file";
  }
  std::ofstream(file + ".unreadable") << "a copy";
  const timespec longAgo[2]{{.tv_sec = 1, .tv_nsec = 0}, {.tv_sec = 1, .tv_nsec = 0}};
  utimensat(AT_FDCWD, (file + ".AbCdEf").c_str(), longAgo, 0);
  utimensat(AT_FDCWD, (file + ".unreadable").c_str(), longAgo, 0);
  const UserDefaults defaults(file);
  EXPECT_EQ(files(), (std::vector<std::string>{"zolt.ini.GhIjKl", "zolt.ini.unreadable"}))
      << "a recent one may be in use";
}

TEST_F(UserDefaultsTest, LosesNoKeyIfTwoUseOneFile) {
  UserDefaults one(file);
  UserDefaults two(file);
  for (int i = 0; i < 50; ++i) {
    one.setInteger("one" + std::to_string(i), i);
    two.setInteger("two" + std::to_string(i), i);
    (i % 2 == 0 ? one : two).synchronize();
  }
  one.synchronize();
  two.synchronize();
  const UserDefaults later(file);
  for (int i = 0; i < 50; ++i) {
    EXPECT_EQ(later.stringForKey("one" + std::to_string(i)), std::to_string(i));
    EXPECT_EQ(later.stringForKey("two" + std::to_string(i)), std::to_string(i));
  }
}

TEST_F(UserDefaultsTest, AnnouncesChangesWrittenByAnother) {
  UserDefaults one(file);
  UserDefaults two(file);
  std::vector<std::string> heard;
  QObject::connect(&two, &UserDefaults::changed, &two, [&](const std::string& key) { heard.push_back(key); });
  one.setString("theme", "Light");
  one.synchronize();
  two.synchronize();
  EXPECT_EQ(heard, std::vector<std::string>{"theme"});
  EXPECT_EQ(two.stringForKey("theme"), "Light");
}

TEST_F(UserDefaultsTest, KeepsAllBindingsOfAKeyInSync) {
  UserDefaults defaults(file);
  StoredString one(defaults, "startupShell", "");
  StoredString two(defaults, "startupShell", "");
  int changes = 0;
  QObject::connect(&two, &StoredString::changed, &two, [&] { ++changes; });
  EXPECT_EQ(two.value(), "");
  one.setValue("/bin/zsh");
  EXPECT_EQ(two.value(), "/bin/zsh");
  EXPECT_EQ(changes, 1);
  defaults.setString("startupCommand", "x");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(StoredString(defaults, "selectedTheme", "Dark").value(), "Dark");
}

// Damaged files, which are reported on standard error.
class BrokenSettings : public UserDefaultsTest {
 protected:
  std::string errorsOf(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
  }
};

TEST_F(BrokenSettings, AreCopiedAndKeepEveryReadableKey) {
  const std::string broken = "[General]\ntheme=Light\n\x01\x02garbage\nfontSize=20\nhalf a line";
  write(broken);
  const std::string reported = errorsOf([&] {
    UserDefaults defaults(file);
    EXPECT_EQ(defaults.stringForKey("theme"), "Light");
    EXPECT_EQ(defaults.doubleForKey("fontSize"), 20);
    defaults.setString("new", "value");
  });
  EXPECT_EQ(reported, "zolt: settings file " + file + ": parts of it cannot be read; a copy is kept in " + file +
                          ".unreadable\n");
  EXPECT_EQ(test::fileContent(file + ".unreadable"), broken);
  EXPECT_EQ(content(), "[General]\nfontSize=20\nnew=value\ntheme=Light\n");
}

TEST_F(BrokenSettings, AreReportedOnce) {
  write("garbage\n");
  EXPECT_NE(errorsOf([&] { UserDefaults defaults(file); }), "");
  EXPECT_EQ(errorsOf([&] { UserDefaults defaults(file); }), "");
  EXPECT_EQ(files(), (std::vector<std::string>{"zolt.ini", "zolt.ini.unreadable"}));
}

TEST_F(BrokenSettings, KeepEarlierCopies) {
  for (const char* broken : {"first\n", "second\n", "third\n"}) {
    write(broken);
    errorsOf([&] { UserDefaults defaults(file); });
  }
  EXPECT_EQ(test::fileContent(file + ".unreadable"), "first\n");
  EXPECT_EQ(test::fileContent(file + ".unreadable2"), "second\n");
  EXPECT_EQ(test::fileContent(file + ".unreadable3"), "third\n");
}

TEST_F(BrokenSettings, LoseNoLinesToAnOpenQuotationBeforeThem) {
  write("[General]\nstartupCommand=\"echo\ntheme=Light\n");
  errorsOf([&] { EXPECT_EQ(UserDefaults(file).stringForKey("theme"), "Light"); });
}

TEST_F(BrokenSettings, OfZerosReadAsEmpty) {
  write(std::string(4096, '\0'));
  errorsOf([&] { EXPECT_EQ(UserDefaults(file).stringForKey("theme"), std::nullopt); });
  EXPECT_EQ(test::fileContent(file + ".unreadable"), std::string(4096, '\0'));
}

TEST_F(BrokenSettings, OfHugeSizeKeepTheirReadableKeys) {
  std::string huge = "[General]\ntheme=Light\n";
  huge += "long=" + std::string(2'000'000, 'x') + "\n";
  for (int i = 0; i < 100'000; ++i) {
    huge += "no key here, only words\n";
  }
  huge += "fontSize=20\n";
  write(huge);
  const std::string reported = errorsOf([&] {
    const UserDefaults defaults(file);
    EXPECT_EQ(defaults.stringForKey("theme"), "Light");
    EXPECT_EQ(defaults.doubleForKey("fontSize"), 20);
    EXPECT_EQ(defaults.stringForKey("long"), std::nullopt);
  });
  EXPECT_NE(reported.find("a copy is kept"), std::string::npos);
  EXPECT_EQ(test::fileContent(file + ".unreadable"), huge);
}

TEST_F(BrokenSettings, DoNotIncludeCarriageReturnsAndAByteOrderMark) {
  write("\xEF\xBB\xBF[General]\r\ntheme=Light\r\nfontSize=20\r\n");
  const std::string reported = errorsOf([&] {
    const UserDefaults defaults(file);
    EXPECT_EQ(defaults.stringForKey("theme"), "Light");
    EXPECT_EQ(defaults.doubleForKey("fontSize"), 20);
  });
  EXPECT_EQ(reported, "");
}

TEST_F(BrokenSettings, MayHoldAnyBytes) {
  std::uint32_t random = 12345;
  const auto next = [&random] { return random = random * 1664525U + 1013904223U; };
  const std::string base = "[General]\ntheme=Light\nfontSize=20\nstartupCommand=\"a, b\"\nx=@Variant(\\0\\0\\0)\n";
  for (int round = 0; round < 300; ++round) {
    std::string mutated = base;
    for (int i = 0; i < 4; ++i) {
      mutated[next() % mutated.size()] = static_cast<char>(next() >> 24);
    }
    if (round % 3 == 0) mutated.resize(next() % mutated.size());
    write(mutated);
    errorsOf([&] {
      UserDefaults defaults(file);
      defaults.setString("written", "yes");
    });
    EXPECT_EQ(errorsOf([&] { EXPECT_EQ(UserDefaults(file).stringForKey("written"), "yes"); }), "") << mutated;
  }
}

TEST_F(BrokenSettings, StayInMemoryAndAreReportedOnceIfTheFolderCannotBeCreated) {
  write("a file, no folder\n");
  UserDefaults defaults(file + "/zolt.ini");
  const std::string reported = errorsOf([&] {
    for (int i = 0; i < 3; ++i) {
      defaults.setInteger("a", i);
      defaults.synchronize();
    }
  });
  EXPECT_EQ(reported, "zolt: settings cannot be saved to " + file + "/zolt.ini\n");
  EXPECT_EQ(defaults.integerForKey("a"), 2);
  EXPECT_EQ(content(), "a file, no folder\n");
}

TEST_F(BrokenSettings, BehindALinkAreCopiedAsAFile) {
  const std::string target = file + "-target";
  const std::string broken = "[General]\ntheme=Light\nwords without a key\n";
  std::ofstream(target) << broken;
  ASSERT_EQ(symlink(target.c_str(), file.c_str()), 0);
  errorsOf([&] {
    UserDefaults defaults(file);
    EXPECT_EQ(defaults.stringForKey("theme"), "Light");
    defaults.setString("new", "value");
  });
  EXPECT_TRUE(QFileInfo(QString::fromStdString(file)).isSymLink());
  EXPECT_EQ(test::fileContent(target), "[General]\nnew=value\ntheme=Light\n");
  EXPECT_EQ(test::fileContent(target + ".unreadable"), broken);
}

TEST_F(BrokenSettings, DoNotWaitForAFifo) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const std::string reported = errorsOf([&] {
    UserDefaults defaults(file);
    defaults.setString("theme", "Dark");
    EXPECT_EQ(defaults.stringForKey("theme"), "Dark");
  });
  EXPECT_EQ(reported, "zolt: settings file " + file + ": is not a regular file; changes are not saved\n");
}

TEST_F(BrokenSettings, DoNotIncludeLongOrOddValuesThatWereWritten) {
  std::string cjk;
  for (int i = 0; i < 32767; ++i) {
    cjk += "\u65E5";
  }
  const std::vector<std::string> values{cjk, std::string(32767, '\\'), "del \x7F", "\x01\x1F \xC2\x80"};
  for (const std::string& value : values) {
    const std::string reported = errorsOf([&] {
      { UserDefaults(file).setString("startupCommand", value); }
      EXPECT_EQ(UserDefaults(file).stringForKey("startupCommand"), value);
    });
    EXPECT_EQ(reported, "");
  }
}

// While it lives, a process of root's runs as another user.
class OtherUser {
 public:
  explicit OtherUser(const QString& folder) : m_wasRoot(geteuid() == 0) {
    if (!m_wasRoot) return;
    const QByteArray path = folder.toUtf8();
    m_changed = chown(path.constData(), kNobody, kNobody) == 0 && seteuid(kNobody) == 0;
  }
  ~OtherUser() {
    if (m_changed) static_cast<void>(seteuid(0));
  }
  bool isLimited() const { return !m_wasRoot || m_changed; }

 private:
  static constexpr uid_t kNobody = 65534;
  bool m_wasRoot;
  bool m_changed = false;
};

TEST_F(BrokenSettings, LeaveAFileThatIsNotWritableUnchanged) {
  write("[General]\ntheme=Light\n");
  const OtherUser user(folder.path());
  if (!user.isLimited()) GTEST_SKIP() << "this user may write everything and cannot become another user";
  chmod(folder.path().toUtf8().constData(), 0500);
  const std::string reported = errorsOf([&] {
    UserDefaults defaults(file);
    defaults.setString("theme", "Dark");
    EXPECT_EQ(defaults.stringForKey("theme"), "Dark");
  });
  chmod(folder.path().toUtf8().constData(), 0700);
  EXPECT_EQ(reported, "zolt: settings cannot be saved to " + file + "\n");
  EXPECT_EQ(content(), "[General]\ntheme=Light\n");
}

TEST_F(BrokenSettings, LeaveADirectoryOfThatNameAlone) {
  QDir().mkpath(QString::fromStdString(file));
  const std::string reported = errorsOf([&] {
    UserDefaults defaults(file);
    defaults.setString("theme", "Dark");
    EXPECT_EQ(defaults.stringForKey("theme"), "Dark");
  });
  EXPECT_NE(reported, "");
  EXPECT_TRUE(QFileInfo(QString::fromStdString(file)).isDir());
}

}  // namespace
}  // namespace zolt
