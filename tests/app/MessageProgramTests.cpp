// `zolt msg` and the instance it speaks to, both as the real program.
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>

#include "RunningZolt.h"
#include "app/SingleInstance.h"
#include "messages/MessageLine.h"

namespace zolt {
namespace {

using test::Ended;
using test::waitFor;

QString latin(const std::string& text) {
  return QString::fromStdString(text);
}

class MessageProgramTest : public testing::Test {
 protected:
  void start() { zolt.start({QStringLiteral("--full-emulation")}); }
  bool waitForFile(const QString& name, const QByteArray& content) {
    return waitFor([&] {
      QFile file(zolt.home() + QLatin1Char('/') + name);
      return file.open(QIODevice::ReadOnly) && file.readAll() == content;
    });
  }
  static QProcessEnvironment with(const char* variable, const std::string& value) {
    QProcessEnvironment environment;
    environment.insert(QLatin1String(variable), latin(value));
    return environment;
  }

  test::RunningZolt zolt;
};

TEST_F(MessageProgramTest, SaysSoWhereNoneRuns) {
  const Ended ended = zolt.ask({QStringLiteral("new-window")});
  EXPECT_EQ(ended.status, 3);
  EXPECT_EQ(ended.output, "");
  EXPECT_EQ(ended.error, "zolt msg: Zolt is not running on this display; start it first\n");
}

TEST_F(MessageProgramTest, ExplainsWrongUsage) {
  for (const auto& [arguments, reason] : std::vector<std::pair<QStringList, std::string>>{
           {{}, "a verb is missing; zolt msg --help tells them all"},
           {{QStringLiteral("split"), QStringLiteral("up")}, "a split is made to the right or down, not \"up\""},
           {{QStringLiteral("send-text"), QStringLiteral("a")}, "send-text needs the ID of a terminal"}}) {
    const Ended ended = zolt.ask(arguments);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.output, "");
    EXPECT_EQ(ended.error, "zolt msg: " + reason + "\n");
  }
  const Ended help = zolt.ask({QStringLiteral("--help")});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.output, MessageLine::helpText());
}

TEST_F(MessageProgramTest, OpensTypesAndLists) {
  start();
  const auto tab = zolt.done({QStringLiteral("new-tab"), QStringLiteral("--title"), QStringLiteral("Work")});
  const QString terminal = latin(tab["terminal"]);
  zolt.done({QStringLiteral("send-text"), QStringLiteral("--terminal"), terminal, QStringLiteral("--token"),
             latin(tab["token"]), QStringLiteral("pwd >where; echo $ZOLT_TERMINAL >terminal\n")});
  EXPECT_TRUE(waitForFile(QStringLiteral("where"), zolt.home().toUtf8() + "\n"));
  EXPECT_TRUE(waitForFile(QStringLiteral("terminal"), terminal.toUtf8() + "\n"));
  const auto windows = zolt.windows();
  ASSERT_EQ(windows.size(), 1U);
  ASSERT_EQ(windows[0]["tabs"].size(), 2U);
  EXPECT_EQ(windows[0]["tabs"][1]["title"], "Work");
}

TEST_F(MessageProgramTest, TypesWhatStandardInputHoldsForTheHolderOfTheTokenInTheEnvironment) {
  start();
  const auto split =
      zolt.done({QStringLiteral("split"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("stty raw -echo; echo >ready; head -c 5 >got; sleep 1000")});
  ASSERT_TRUE(waitForFile(QStringLiteral("ready"), "\n"));
  const QStringList type{QStringLiteral("send-text"), QStringLiteral("--terminal"), latin(split["terminal"]),
                         QStringLiteral("-")};
  const Ended refused = zolt.ask(type, "a\n");
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.answer()["error"], "only the token of its opening allows to type into a terminal");
  zolt.done(type, "a\r\nb\n\x03", with("ZOLT_TOKEN", split["token"]));
  EXPECT_TRUE(waitForFile(QStringLiteral("got"), "a\rb\r\x03"));
}

TEST_F(MessageProgramTest, ActsOnTheTerminalThatItRunsIn) {
  start();
  const std::string first = zolt.windows()[0]["tabs"][0]["terminals"][0]["id"];
  zolt.done({QStringLiteral("new-tab")});
  zolt.done({QStringLiteral("split")}, {}, with("ZOLT_TERMINAL", first));
  const auto tabs = zolt.windows()[0]["tabs"];
  EXPECT_EQ(tabs[0]["terminals"].size(), 2U);
  EXPECT_EQ(tabs[1]["terminals"].size(), 1U);
  const Ended elsewhere = zolt.ask({QStringLiteral("split")}, {}, with("ZOLT_TERMINAL", "another"));
  EXPECT_EQ(elsewhere.status, 1);
  EXPECT_EQ(elsewhere.output, "{\"ok\":false,\"error\":\"there is no terminal another\"}\n");
}

TEST_F(MessageProgramTest, SendsUpToAMebibyte) {
  start();
  const auto tab =
      zolt.done({QStringLiteral("new-tab"), QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"),
                 QStringLiteral("stty raw -echo; echo >ready; head -c 1000000 | cksum >got; sleep 1000")});
  ASSERT_TRUE(waitForFile(QStringLiteral("ready"), "\n"));
  const QStringList type{QStringLiteral("send-text"), QStringLiteral("--terminal"), latin(tab["terminal"]),
                         QStringLiteral("--token"),   latin(tab["token"]),          QStringLiteral("-")};
  zolt.done(type, QByteArray(1'000'000, 'x'));
  EXPECT_TRUE(waitForFile(QStringLiteral("got"), "1459561774 1000000\n"));
  const Ended ended = zolt.ask(type, QByteArray(1'048'576, 'x'));
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "zolt msg: the request is larger than 1 MiB\n");
}

// As an instance of a version without messages does, or one that is on its way out.
TEST_F(MessageProgramTest, SaysSoWhereTheInstanceDoesNotAnswer) {
  for (const QByteArray& answer : {QByteArray(), QByteArray("opened\n"), QByteArray("{\"ok\":true}")}) {
    QLocalServer server;
    QObject::connect(&server, &QLocalServer::newConnection, &server, [&] {
      QLocalSocket* client = server.nextPendingConnection();
      QObject::connect(client, &QLocalSocket::readyRead, client, [client, answer] {
        client->readAll();
        client->write(answer);
        client->disconnectFromServer();
      });
    });
    ASSERT_TRUE(server.listen(latin(SingleInstance(zolt.runtimeFolder().toStdString()).socketPath())));
    const Ended ended = zolt.ask({QStringLiteral("list")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.answer()["error"],
              "Zolt did not answer: it is busy, or of a version that does not understand the request");
  }
}

TEST_F(MessageProgramTest, KeepsTokensOutOfWhatItPrints) {
  start();
  const auto tab = zolt.done({QStringLiteral("new-tab")});
  zolt.done({QStringLiteral("send-text"), QStringLiteral("--terminal"), latin(tab["terminal"]),
             QStringLiteral("--token"), latin(tab["token"]), QStringLiteral("exit\n")});
  EXPECT_TRUE(waitFor([&] { return zolt.windows()[0]["tabs"].size() == 1; }));
  EXPECT_TRUE(zolt.stop());
  EXPECT_FALSE(zolt.printed().contains(QByteArray::fromStdString(tab["token"])));
}

}  // namespace
}  // namespace zolt
