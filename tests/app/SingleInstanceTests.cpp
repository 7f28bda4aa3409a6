#include "app/SingleInstance.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <future>
#include <utility>
#include <vector>

#include "messages/Answer.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

using Outcome = SingleInstance::Outcome;

const SingleInstance::AnswerMessage kNoMessages = [](const Message&) { return answerRefused("none is expected"); };

class SingleInstanceTest : public testing::Test {
 protected:
  std::string path() const { return folder.path().toStdString(); }
  QStringList files() const {
    return QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System);
  }

  // The outcome of a second start while this instance's event loop runs.
  Outcome secondStart(const OpenRequest& request) {
    auto outcome = std::async(std::launch::async, [&] { return SingleInstance(path()).claim(request); });
    test::waitFor([&] { return outcome.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
    return outcome.get();
  }

  QTemporaryDir folder;
};

TEST_F(SingleInstanceTest, IsTheFirstWhenNoneRuns) {
  SingleInstance instance(path());
  EXPECT_EQ(instance.claim({}), Outcome::First);
  EXPECT_TRUE(instance.isFirst());
}

TEST_F(SingleInstanceTest, OpensAWindowInTheRunningOneForASecondStart) {
  SingleInstance instance(path());
  ASSERT_EQ(instance.claim({}), Outcome::First);
  std::vector<OpenRequest> opened;
  ASSERT_TRUE(instance.serve([&](const OpenRequest& request) { opened.push_back(request); }, kNoMessages));
  EXPECT_EQ(secondStart({.workingDirectory = "/a b/\"c\"\n", .activationToken = "token"}), Outcome::Forwarded);
  EXPECT_EQ(secondStart({.workingDirectory = "/d", .activationToken = ""}), Outcome::Forwarded);
  ASSERT_EQ(opened.size(), 2U);
  EXPECT_EQ(opened[0].workingDirectory, "/a b/\"c\"\n");
  EXPECT_EQ(opened[0].activationToken, "token");
  EXPECT_EQ(opened[1].workingDirectory, "/d");
}

TEST_F(SingleInstanceTest, PassesTheDisplayThatWasAskedFor) {
  for (const auto& display :
       {std::optional<Display>(), std::optional(Display::Log), std::optional(Display::FullEmulation)}) {
    const auto decoded = OpenRequest::decoded(
        OpenRequest{.workingDirectory = "/a", .activationToken = "", .display = display}.encoded());
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->workingDirectory, "/a");
    EXPECT_EQ(decoded->display, display);
  }
}

// As older and newer versions send it.
TEST_F(SingleInstanceTest, OpensAWindowForARequestWithoutADisplayItKnows) {
  for (const char* request : {R"({"open":"window","directory":"/a","token":""})",
                              R"({"open":"window","directory":"/a","display":"holographic"})",
                              R"({"open":"window","directory":"/a","display":7})"}) {
    const auto decoded = OpenRequest::decoded(request);
    ASSERT_TRUE(decoded) << request;
    EXPECT_EQ(decoded->workingDirectory, "/a");
    EXPECT_EQ(decoded->display, std::nullopt);
  }
}

TEST_F(SingleInstanceTest, WaitsForAFirstInstanceThatIsStillStarting) {
  SingleInstance instance(path());
  ASSERT_EQ(instance.claim({}), Outcome::First);
  int opened = 0;
  auto second = std::async(std::launch::async, [&] { return SingleInstance(path()).claim({}); });
  test::runLoopFor(std::chrono::milliseconds(200));
  ASSERT_TRUE(instance.serve([&](const OpenRequest&) { ++opened; }, kNoMessages));
  test::waitFor([&] { return second.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
  EXPECT_EQ(second.get(), Outcome::Forwarded);
  EXPECT_EQ(opened, 1);
}

TEST_F(SingleInstanceTest, LeavesNoFileBehind) {
  {
    SingleInstance instance(path());
    ASSERT_EQ(instance.claim({}), Outcome::First);
    ASSERT_TRUE(instance.serve([](const OpenRequest&) {}, kNoMessages));
    EXPECT_EQ(files().size(), 2);
  }
  EXPECT_TRUE(files().isEmpty()) << files().join(QLatin1Char(' ')).toStdString();
}

TEST_F(SingleInstanceTest, LeavesTheFilesOfTheRunningOneAlone) {
  SingleInstance instance(path());
  ASSERT_EQ(instance.claim({}), Outcome::First);
  ASSERT_TRUE(instance.serve([](const OpenRequest&) {}, kNoMessages));
  EXPECT_EQ(secondStart({}), Outcome::Forwarded);
  EXPECT_EQ(files().size(), 2);
  EXPECT_EQ(secondStart({}), Outcome::Forwarded);
}

TEST_F(SingleInstanceTest, TakesOverFromOneThatWasKilled) {
  std::string socketPath;
  const pid_t child = fork();
  if (child == 0) {
    SingleInstance killed(path());
    const bool first = killed.claim({}) == Outcome::First;
    QFile(QString::fromStdString(killed.socketPath())).open(QIODevice::WriteOnly);  // what its socket leaves behind
    _exit(first ? 0 : 1);
  }
  int status = -1;
  waitpid(child, &status, 0);
  ASSERT_EQ(status, 0);
  ASSERT_EQ(files().size(), 2);
  SingleInstance instance(path());
  EXPECT_EQ(instance.claim({}), Outcome::First);
  EXPECT_TRUE(instance.serve([](const OpenRequest&) {}, kNoMessages));
  EXPECT_EQ(secondStart({}), Outcome::Forwarded);
}

TEST_F(SingleInstanceTest, RunsUnsharedWithoutAPlaceForItsLock) {
  EXPECT_EQ(SingleInstance("").claim({}), Outcome::Unshared);
  EXPECT_EQ(SingleInstance(path() + "/missing").claim({}), Outcome::Unshared);
  EXPECT_EQ(SingleInstance(path() + std::string(200, 'x')).claim({}), Outcome::Unshared);
}

TEST_F(SingleInstanceTest, SaysWhatIsWrongWithAnInvalidRequest) {
  SingleInstance instance(path());
  ASSERT_EQ(instance.claim({}), Outcome::First);
  int opened = 0;
  ASSERT_TRUE(instance.serve([&](const OpenRequest&) { ++opened; }, kNoMessages));
  const std::vector<std::pair<QByteArray, std::string>> lines{
      {"\n", "the request is not a JSON object"},
      {"{}\n", "the request does not say which version of the messages it is of"},
      {"{\"open\":\"file\"}\n", "the request does not say which version of the messages it is of"},
      {"[1,2]\n", "the request is not a JSON object"},
      {"\xFF\xFE\n", "the request is not a JSON object"},
      {QByteArray(900'000, '[') + "\n", "the request is not a JSON object"},
      {QByteArray(kRequestLimitBytes + 1, 'x'), "the request is too large"}};
  for (const auto& [line, reason] : lines) {
    SCOPED_TRACE(line.left(40).toStdString());
    QLocalSocket socket;
    socket.connectToServer(QString::fromStdString(instance.socketPath()));
    socket.write(line);
    EXPECT_TRUE(test::waitFor([&] { return socket.state() == QLocalSocket::UnconnectedState; }));
    EXPECT_EQ(socket.readAll().toStdString(), answerRefused(reason));
  }
  EXPECT_EQ(opened, 0);
  EXPECT_EQ(secondStart({}), Outcome::Forwarded);
}

TEST_F(SingleInstanceTest, AnswersMessagesAndSecondStartsOnOneSocket) {
  SingleInstance instance(path());
  ASSERT_EQ(instance.claim({}), Outcome::First);
  int opened = 0;
  std::vector<Message> messages;
  ASSERT_TRUE(instance.serve([&](const OpenRequest&) { ++opened; },
                             [&](const Message& message) {
                               messages.push_back(message);
                               return answerDone();
                             }));
  const Message sent{.verb = Verb::Split, .side = "down", .terminal = "a"};
  QLocalSocket socket;
  socket.connectToServer(QString::fromStdString(instance.socketPath()));
  socket.write(QByteArray::fromStdString(sent.encoded()));
  EXPECT_TRUE(test::waitFor([&] { return socket.state() == QLocalSocket::UnconnectedState; }));
  EXPECT_EQ(socket.readAll().toStdString(), answerDone());
  EXPECT_EQ(secondStart({}), Outcome::Forwarded);
  EXPECT_EQ(messages, std::vector{sent});
  EXPECT_EQ(opened, 1);
}

TEST_F(SingleInstanceTest, KeepsItsSocketPrivateToTheUser) {
  SingleInstance instance(path());
  ASSERT_EQ(instance.claim({}), Outcome::First);
  ASSERT_TRUE(instance.serve([](const OpenRequest&) {}, kNoMessages));
  struct stat socket {};
  ASSERT_EQ(stat(instance.socketPath().c_str(), &socket), 0);
  EXPECT_EQ(socket.st_mode & 0077, 0U);
}

TEST(RuntimeFolder, MustBelongToTheUserAlone) {
  const QByteArray before = qgetenv("XDG_RUNTIME_DIR");
  QTemporaryDir folder;
  qputenv("XDG_RUNTIME_DIR", folder.path().toUtf8());
  chmod(folder.path().toUtf8().constData(), 0755);
  EXPECT_EQ(SingleInstance::defaultRuntimeFolder(), "");
  chmod(folder.path().toUtf8().constData(), 0700);
  EXPECT_EQ(SingleInstance::defaultRuntimeFolder(), folder.path().toStdString());
  qputenv("XDG_RUNTIME_DIR", before);
}

}  // namespace
}  // namespace zolt
