#include "view/saving/OutputSaver.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <condition_variable>
#include <mutex>

#include "emulation/ANSIParser.h"
#include "history/TextStorage.h"
#include "support/ManualClock.h"
#include "support/NumberedLines.h"
#include "support/WaitFor.h"
#include "view/saving/SaveErrorText.h"

namespace zolt {
namespace {

using test::numberedLines;
using test::waitFor;

// Lets so many pass, and holds up the others until it is opened.
class Gate {
 public:
  void letPass(int count) {
    const std::lock_guard lock(m_mutex);
    m_left = count;
    m_changed.notify_all();
  }
  void open() { letPass(1 << 30); }
  void pass() {
    std::unique_lock lock(m_mutex);
    ++m_arrived;
    m_changed.wait(lock, [this] { return m_left > 0; });
    --m_left;
  }
  int arrived() {
    const std::lock_guard lock(m_mutex);
    return m_arrived;
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  int m_left = 1 << 30;
  int m_arrived = 0;
};

// A file that is read as fast as the gate allows.
class GatedFile : public SpillFile {
 public:
  GatedFile(std::unique_ptr<SpillFile> file, std::shared_ptr<Gate> gate)
      : m_file(std::move(file)), m_gate(std::move(gate)) {}
  bool write(std::uint64_t offset, std::string_view bytes) override { return m_file->write(offset, bytes); }
  bool read(std::uint64_t offset, std::size_t size, std::string& bytes) const override {
    m_gate->pass();
    return m_file->read(offset, size, bytes);
  }

 private:
  std::unique_ptr<SpillFile> m_file;
  std::shared_ptr<Gate> m_gate;
};

class OutputSaverTest : public testing::Test {
 protected:
  ~OutputSaverTest() override { gate->open(); }

  // A log whose older blocks lie in a gated file.
  TextStorage gatedStorage() {
    return TextStorage({.memoryBudget = 0,
                        .hotBlocks = 1,
                        .folder = folder.filePath(QStringLiteral("cache")).toStdString(),
                        .openFile = [gated = gate](const std::string& path) -> std::unique_ptr<SpillFile> {
                          return std::make_unique<GatedFile>(openSpillFile(path), gated);
                        }});
  }
  static TextSnapshot all(const TextStorage& storage) { return storage.snapshot(0, storage.blockCount()); }
  void start(const TextStorage& storage, const QString& path, OutputFormat format = OutputFormat::PlainText) {
    saver = std::make_unique<OutputSaver>(all(storage), format, path);
    listen();
  }
  void listen() {
    QObject::connect(saver.get(), &OutputSaver::finished, [this] { finished += 1; });
    QObject::connect(saver.get(), &OutputSaver::failed, [this](const QString& reason) { failures << reason; });
    QObject::connect(saver.get(), &OutputSaver::ended, [this] { ended += 1; });
    QObject::connect(saver.get(), &OutputSaver::progressed, [this](double share) { shares.push_back(share); });
  }
  bool waitForEnd() {
    return waitFor([this] { return ended == 1; });
  }
  // Of the file that is saved.
  std::string content() const {
    QFile file(target);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(none)";
  }
  void put(const char* content) {
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  QStringList names() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

  QTemporaryDir folder;
  QString target = folder.filePath(QStringLiteral("output.txt"));
  std::shared_ptr<Gate> gate = std::make_shared<Gate>();
  test::ManualClock clock;
  std::unique_ptr<OutputSaver> saver;
  int finished = 0;
  int ended = 0;
  QStringList failures;
  std::vector<double> shares;
};

TEST_F(OutputSaverTest, SavesPlainText) {
  TextStorage storage;
  storage.append(ANSIParser().parse("\x1B[31mred\x1B[0m and\rplain\n"));
  start(storage, target);
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(finished, 1);
  EXPECT_EQ(failures, QStringList());
  EXPECT_EQ(content(), "red and\nplain\n");
  EXPECT_EQ(names(), QStringList(QStringLiteral("output.txt")));
}

TEST_F(OutputSaverTest, SavesTextWithItsColours) {
  TextStorage storage;
  storage.append(ANSIParser().parse("\x1B[31mred\x1B[0m and plain\n\x1B[1mbold"));
  start(storage, target, OutputFormat::WithColours);
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(content(), "\x1B[31mred\x1B[0m and plain\n\x1B[1mbold\x1B[0m");
}

TEST_F(OutputSaverTest, SavesNoTextAsAnEmptyFile) {
  put("before");
  start(TextStorage(), target, OutputFormat::WithColours);
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(finished, 1);
  EXPECT_EQ(content(), "");
}

TEST_F(OutputSaverTest, SavesALongTextWhoseStorageIsGone) {
  const std::string text = numberedLines(2'000'000);
  {
    TextStorage storage = gatedStorage();
    storage.append(AttributedString(text, TextAttributes()));
    start(storage, target);
  }
  ASSERT_TRUE(waitForEnd());
  EXPECT_TRUE(content() == text) << content().size();
}

TEST_F(OutputSaverTest, SavesTheOutputOfItsMoment) {
  TextStorage storage = gatedStorage();
  const std::string text = numberedLines(200'000);
  storage.append(AttributedString(text, TextAttributes()));
  storage.waitUntilIdle();
  gate->letPass(3);
  start(storage, target);
  ASSERT_TRUE(waitFor([this] { return gate->arrived() == 4; }));
  storage.append(AttributedString(numberedLines(200'000), TextAttributes()));
  EXPECT_EQ(content(), "(none)") << "it is not there before it is complete";
  gate->open();
  ASSERT_TRUE(waitForEnd());
  EXPECT_TRUE(content() == text) << content().size();
}

TEST_F(OutputSaverTest, ReportsItsProgressOnceAnInterval) {
  constexpr auto kInterval = OutputSaver::progressInterval;
  TextStorage storage = gatedStorage();
  storage.append(AttributedString(numberedLines(500'000), TextAttributes()));
  storage.waitUntilIdle();
  gate->letPass(20);
  saver = std::make_unique<OutputSaver>(all(storage), OutputFormat::PlainText, target, nullptr, WorkerQueue::utility(),
                                        clock);
  listen();
  const double blocks = static_cast<double>(storage.blockCount());
  ASSERT_TRUE(waitFor([this] { return gate->arrived() == 21; }));
  clock.advance(kInterval - std::chrono::milliseconds(1));
  EXPECT_TRUE(shares.empty());
  clock.advance(std::chrono::milliseconds(1));
  ASSERT_EQ(shares.size(), 1U);
  EXPECT_NEAR(shares[0], 20 / blocks, 1 / blocks);
  EXPECT_EQ(saver->progress(), shares[0]);
  clock.advance(10 * kInterval);
  EXPECT_EQ(shares.size(), 1U) << "nothing has been written since";
  gate->letPass(10);
  ASSERT_TRUE(waitFor([this] { return gate->arrived() == 31; }));
  EXPECT_EQ(shares.size(), 1U);
  clock.advance(kInterval);
  ASSERT_EQ(shares.size(), 2U);
  EXPECT_NEAR(shares[1], 30 / blocks, 1 / blocks);
  gate->open();
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(clock.untilNext(), std::nullopt);
}

TEST_F(OutputSaverTest, IsCancelledInTheMiddleAndLeavesTheFileAsItWas) {
  put("before");
  TextStorage storage = gatedStorage();
  storage.append(AttributedString(numberedLines(500'000), TextAttributes()));
  storage.waitUntilIdle();
  gate->letPass(20);
  start(storage, target);
  ASSERT_TRUE(waitFor([this] { return gate->arrived() == 21; }));
  EXPECT_EQ(names().size(), 2) << "the temporary file is beside it";
  saver->cancel();
  gate->open();
  ASSERT_TRUE(waitForEnd());
  EXPECT_LE(gate->arrived(), 22) << "it reads no further";
  EXPECT_EQ(finished, 0);
  EXPECT_EQ(failures, QStringList());
  EXPECT_EQ(content(), "before");
  EXPECT_EQ(names(), QStringList(QStringLiteral("output.txt")));
}

TEST_F(OutputSaverTest, IsCancelledBeforeItHasBegun) {
  Gate busy;
  busy.letPass(0);
  {
    WorkerQueue queue(1);
    queue.async([&] { busy.pass(); });
    saver = std::make_unique<OutputSaver>(all(TextStorage()), OutputFormat::PlainText, target, nullptr, queue);
    listen();
    saver->cancel();
    busy.open();
    ASSERT_TRUE(waitForEnd());
  }
  EXPECT_EQ(finished, 0);
  EXPECT_EQ(names(), QStringList());
}

TEST_F(OutputSaverTest, LeavesNoTemporaryFileWhenItGoes) {
  TextStorage storage = gatedStorage();
  storage.append(AttributedString(numberedLines(2'000'000), TextAttributes()));
  storage.waitUntilIdle();
  start(storage, target);
  ASSERT_TRUE(waitFor([this] { return !names().isEmpty(); }));
  saver.reset();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(OutputSaverTest, DoesNotWaitForEverWhenItGoes) {
  TextStorage storage = gatedStorage();
  storage.append(AttributedString(numberedLines(200'000), TextAttributes()));
  storage.waitUntilIdle();
  gate->letPass(3);
  start(storage, target);
  ASSERT_TRUE(waitFor([this] { return gate->arrived() == 4; }));
  saver.reset();  // while the gate is shut: a saver that waited for its thread would wait for ever
  EXPECT_EQ(names(), QStringList()) << "nor does it leave its file then";
}

TEST_F(OutputSaverTest, SavesTheNoticeWhereTextIsLost) {
  TextStorage storage({.memoryBudget = 0, .hotBlocks = 1, .folder = "nowhere", .openFile = [](const std::string&) {
                         return std::unique_ptr<SpillFile>();
                       }});
  storage.append(AttributedString(numberedLines(100'000), TextAttributes()));
  storage.waitUntilIdle();
  ASSERT_GT(storage.usage().droppedBlocks, 0U);
  start(storage, target, OutputFormat::WithColours);
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(finished, 1);
  EXPECT_TRUE(content().starts_with(kHistoryLostNotice));
  EXPECT_TRUE(content().ends_with("\nline 99999\n"));
}

TEST_F(OutputSaverTest, SaysWhatWentWrong) {
  start(TextStorage(), folder.filePath(QStringLiteral("no/such.txt")));
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(finished, 0);
  EXPECT_EQ(failures, QStringList(QStringLiteral("The folder for “such.txt” does not exist.")));
  EXPECT_EQ(names(), QStringList());
}

TEST_F(OutputSaverTest, ReplacesNothingThatIsNoFile) {
  start(TextStorage(), QStringLiteral("/dev/null"));
  ASSERT_TRUE(waitForEnd());
  EXPECT_EQ(failures, QStringList(QStringLiteral("“null” is not a regular file and was not replaced.")));
}

TEST(SaveErrorText, IsASentenceAboutTheFileWhateverTheError) {
  const QString file = QStringLiteral("/some/folder/output.txt");
  EXPECT_EQ(saveErrorText(ENOSPC, file), QStringLiteral("There is not enough free space for “output.txt”."));
  EXPECT_EQ(saveErrorText(EACCES, file), QStringLiteral("You do not have permission to write “output.txt”."));
  EXPECT_EQ(saveErrorText(EISDIR, file), QStringLiteral("“output.txt” is a folder."));
  EXPECT_EQ(saveErrorText(EIO, file), QStringLiteral("“output.txt” could not be written: Input/output error."));
}

}  // namespace
}  // namespace zolt
