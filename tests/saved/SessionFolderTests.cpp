// The folder in which a session is kept.
#include "saved/SessionFolder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "history/TemporaryFolder.h"
#include "vt/Terminal.h"
#include "vt/TerminalPicture.h"

namespace zolt {
namespace {

constexpr BlockCipher::Key kKey{7};

SavedTab tabOf(const std::string& file) {
  return {.panes = {{.file = file, .size = {.rows = 5, .columns = 30}}}, .layout = sideBySide(1)};
}

// Files cannot grow beyond a few bytes while this lives.
class SmallFiles {
 public:
  SmallFiles() {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    rlimit small = m_before;
    small.rlim_cur = 10;
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &m_before); }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  rlimit m_before{};
};

class SessionFolderTest : public testing::Test {
 protected:
  SessionFolderTest() { EXPECT_TRUE(folder.make()); }

  static vt::TerminalRecord recordOf(std::string_view text) {
    vt::Terminal terminal(TerminalSize{.rows = 5, .columns = 30});
    terminal.feed(text);
    return terminal.record();
  }
  // Saves a window with a tab for each text, and returns the names of the files.
  std::vector<std::string> save(const std::vector<std::string>& texts) const {
    SavedSession session{.windows = {{.width = 500}}};
    std::map<std::string, vt::TerminalRecord> terminals;
    std::vector<std::string> names;
    for (const std::string& text : texts) {
      names.push_back(SessionFolder::newFileName());
      terminals.emplace(names.back(), recordOf(text));
      session.windows[0].tabs.push_back(tabOf(names.back()));
    }
    EXPECT_TRUE(folder.save(session, terminals, kKey));
    return names;
  }
  std::string lines(const std::string& file) const {
    auto stored = folder.terminal(file, kKey);
    if (!stored) return stored.reason();
    return vt::test::linesOf(
        vt::Terminal::restored(std::move(stored.value()), vt::TerminalSettings()).value()->screen());
  }
  std::string pathOf(const std::string& file) const { return folder.path() + "/" + file; }
  std::size_t files() const {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder.path()), {}));
  }

  test::TemporaryFolder parent;
  SessionFolder folder{parent.path() + "/state/zolt/session"};
};

TEST_F(SessionFolderTest, IsTheUsersAlone) {
  EXPECT_TRUE(folder.exists());
  ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
  EXPECT_TRUE(folder.make());
  struct stat facts {};
  ASSERT_EQ(stat(folder.path().c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777U, 0700U);
  EXPECT_FALSE(SessionFolder(parent.path() + "/none").exists());
  std::ofstream(parent.path() + "/file") << "x";
  EXPECT_FALSE(SessionFolder(parent.path() + "/file/session").make());
}

TEST_F(SessionFolderTest, KeepsNothingAtFirst) {
  EXPECT_TRUE(folder.load(kKey).session.windows.empty());
  EXPECT_TRUE(SessionFolder(parent.path() + "/none").load(kKey).session.windows.empty());
}

TEST_F(SessionFolderTest, GivesBackWhatWasSavedLast) {
  save({"before", "this"});
  const std::vector<std::string> names = save({"one", "two"});
  const SessionFolder::Kept kept = folder.load(kKey);
  EXPECT_FALSE(kept.isWithoutLayout);
  ASSERT_EQ(kept.session.windows.size(), 1U);
  EXPECT_EQ(kept.session.windows[0].width, 500);
  EXPECT_EQ(kept.session.windows[0].tabs, (std::vector{tabOf(names[0]), tabOf(names[1])}));
  EXPECT_TRUE(lines(names[0]).starts_with("one"));
  EXPECT_TRUE(lines(names[1]).starts_with("two"));
  EXPECT_EQ(files(), 3U);  // the layout, and no terminal of before
}

TEST_F(SessionFolderTest, LosesOnlyTheTerminalThatIsDamaged) {
  const std::vector<std::string> names = save({"one", "two"});
  std::filesystem::resize_file(pathOf(names[0]), 50);
  EXPECT_EQ(folder.load(kKey).session.windows[0].tabs.size(), 2U);
  EXPECT_EQ(lines(names[0]), "the file is damaged");
  EXPECT_TRUE(lines(names[1]).starts_with("two"));
}

TEST_F(SessionFolderTest, FindsTheTerminalsWithoutALayout) {
  std::vector<std::string> names = save({"one", "two"});
  for (const bool isThere : {true, false}) {
    if (isThere) {
      std::ofstream(folder.path() + "/layout") << "something else";
    } else {
      std::filesystem::remove(folder.path() + "/layout");
    }
    const SessionFolder::Kept kept = folder.load(kKey);
    EXPECT_TRUE(kept.isWithoutLayout);
    ASSERT_EQ(kept.session.windows.size(), 1U);
    ASSERT_EQ(kept.session.windows[0].tabs.size(), 2U);
    std::ranges::sort(names);
    EXPECT_EQ(kept.session.windows[0].tabs[0].panes[0].file, names[0]);
    EXPECT_EQ(kept.session.windows[0].tabs[1].panes[0].file, names[1]);
  }
}

TEST_F(SessionFolderTest, KeepsWhatWasSavedBeforeUntilTheNextIsWhole) {
  const std::vector<std::string> names = save({"one"});
  {
    const SmallFiles full;  // as on a disk that is
    EXPECT_EQ(folder.save({}, {{"x.terminal", recordOf("later")}}, kKey).reason(), "File too large");
  }
  EXPECT_EQ(folder.load(kKey).session.windows[0].tabs, std::vector{tabOf(names[0])});
  EXPECT_TRUE(lines(names[0]).starts_with("one"));
  EXPECT_EQ(files(), 2U) << "nothing is left of what was not finished";
}

TEST_F(SessionFolderTest, SavesTheOthersWhenOneTerminalCannotBe) {
  const std::string name = SessionFolder::newFileName();
  std::filesystem::create_directory(pathOf("0.terminal"));
  EXPECT_EQ(folder
                .save({.windows = {{.tabs = {tabOf(name)}}}},
                      {{"0.terminal", recordOf("lost")}, {name, recordOf("saved")}}, kKey)
                .reason(),
            "Is a directory");
  EXPECT_EQ(folder.load(kKey).session.windows[0].tabs, std::vector{tabOf(name)});
  EXPECT_TRUE(lines(name).starts_with("saved"));
}

TEST_F(SessionFolderTest, CanBeReadWithItsKeyOnly) {
  const std::vector<std::string> names = save({"one"});
  constexpr BlockCipher::Key kOther{8};
  EXPECT_TRUE(folder.load(kOther).isWithoutLayout);
  EXPECT_FALSE(folder.terminal(names[0], kOther));
}

TEST_F(SessionFolderTest, IsClearedOfWhatWasSavedAndNothingElse) {
  save({"one", "two"});
  std::ofstream(pathOf("key")) << "k";
  folder.clear();
  EXPECT_EQ(files(), 1U);
  EXPECT_TRUE(folder.load(kKey).session.windows.empty());
}

}  // namespace
}  // namespace zolt
