// Clients of every kind on a real socket.
#include "app/RequestServer.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Descriptor.h"
#include "platform/LocalConnection.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

using test::waitFor;

// A client that does as it is told, and nothing else.
class Client {
 public:
  explicit Client(const std::string& path) : m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size());
    m_isConnected = connect(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  }

  bool isConnected() const { return m_isConnected; }
  /// As much of it as the other side takes.
  bool send(std::string_view text) {
    return waitFor([&] {
      const ssize_t sent = ::send(m_socket.get(), text.data(), text.size(), MSG_NOSIGNAL);
      if (sent < 0) return errno != EAGAIN;
      text.remove_prefix(static_cast<std::size_t>(sent));
      return text.empty();
    });
  }
  void sayNoMore() { shutdown(m_socket.get(), SHUT_WR); }
  void leave() { m_socket.reset(); }
  /// Everything until the other side closes.
  std::optional<std::string> answer() {
    std::string all;
    const bool isClosed = waitFor([&] {
      char buffer[65536];
      ssize_t got = 0;
      while ((got = read(m_socket.get(), buffer, sizeof buffer)) > 0) {
        all.append(buffer, static_cast<std::size_t>(got));
      }
      return got == 0 || errno != EAGAIN;
    });
    return isClosed ? std::optional(all) : std::nullopt;
  }

 private:
  Descriptor m_socket;
  bool m_isConnected = false;
};

class RequestServerTest : public testing::Test {
 protected:
  static constexpr std::size_t kLimitBytes = 1000;

  std::unique_ptr<RequestServer> serve(RequestServer::Limits limits = {}) {
    if (limits.requestBytes == 0) limits.requestBytes = kLimitBytes;
    auto server = std::make_unique<RequestServer>(
        [this](std::string_view line) -> RequestServer::Answer {
          lines.emplace_back(line);
          if (whenAsked) whenAsked();
          return {.line = answerLine, .whenSent = [this] { ++sent; }};
        },
        [](std::string_view reason) { return "refused: " + std::string(reason) + "\n"; }, limits);
    EXPECT_TRUE(server->listen(path));
    return server;
  }
  static bool isEmpty(RequestServer& server) {
    return waitFor([&] { return server.connections() == 0; });
  }

  QTemporaryDir folder;
  std::string path = folder.filePath(QStringLiteral("socket")).toStdString();
  std::string answerLine = "done\n";
  std::vector<std::string> lines;
  int sent = 0;
  std::function<void()> whenAsked;
};

TEST_F(RequestServerTest, AnswersALineWithALineAndCloses) {
  const auto server = serve();
  Client client(path);
  client.send("a request\nand more that nobody reads\n");
  EXPECT_EQ(client.answer(), "done\n");
  EXPECT_EQ(lines, std::vector<std::string>{"a request"});
  EXPECT_EQ(sent, 1);
  EXPECT_EQ(server->connections(), 0U);
}

TEST_F(RequestServerTest, PutsTogetherALineThatComesInPieces) {
  const auto server = serve();
  Client client(path);
  for (const char* piece : {"a ", "req", "uest", "\n"}) {
    client.send(piece);
    test::runLoopFor(std::chrono::milliseconds(20));
  }
  EXPECT_EQ(client.answer(), "done\n");
  EXPECT_EQ(lines, std::vector<std::string>{"a request"});
}

TEST_F(RequestServerTest, AnswersAClientThatHasSaidAllItHasToSay) {
  const auto server = serve();
  Client client(path);
  client.send("a request\n");
  client.sayNoMore();
  EXPECT_EQ(client.answer(), "done\n");
}

TEST_F(RequestServerTest, LetsGoOfAClientThatStopsWithinItsLine) {
  const auto server = serve();
  Client client(path);
  client.send("half a requ");
  client.sayNoMore();
  EXPECT_EQ(client.answer(), "");
  EXPECT_TRUE(isEmpty(*server));
  EXPECT_TRUE(lines.empty());
}

TEST_F(RequestServerTest, TurnsAwayALineThatIsTooLong) {
  const auto server = serve();
  Client fits(path);
  fits.send(std::string(kLimitBytes - 1, 'x') + "\n");
  EXPECT_EQ(fits.answer(), "done\n");
  Client tooLong(path);
  tooLong.send(std::string(kLimitBytes + 1, 'x'));
  EXPECT_EQ(tooLong.answer(), "refused: the request is too large\n");
  EXPECT_EQ(lines.size(), 1U);
  EXPECT_TRUE(isEmpty(*server));
}

TEST_F(RequestServerTest, LetsGoOfAClientThatNeverSpeaks) {
  const auto server = serve({.time = std::chrono::milliseconds(50)});
  Client client(path);
  EXPECT_EQ(client.answer(), "");
  EXPECT_TRUE(isEmpty(*server));
}

TEST_F(RequestServerTest, LetsGoOfAClientThatNeverReads) {
  answerLine = std::string(8'000'000, 'x') + "\n";
  const auto server = serve({.time = std::chrono::milliseconds(1000)});  // enough to be asked, on any machine
  const auto sockets = [&] { return server->findChildren<QLocalSocket*>().size(); };
  qsizetype atFirst = 0;
  whenAsked = [&] { atFirst = sockets(); };
  Client client(path);
  client.send("a request\n");
  ASSERT_TRUE(waitFor([&] { return lines.size() == 1; }));
  EXPECT_EQ(atFirst, 1);
  EXPECT_TRUE(waitFor([&] { return sockets() == 0; })) << "nothing is kept of it";
}

TEST_F(RequestServerTest, DoesNothingForAClientThatHasLeft) {
  const auto server = serve();
  {
    Client client(path);
    client.send("a request\n");
    client.leave();
  }
  Client next(path);
  next.send("another\n");
  EXPECT_EQ(next.answer(), "done\n");
  EXPECT_EQ(lines, std::vector<std::string>{"another"});
}

TEST_F(RequestServerTest, IsNotKeptFromItsWorkByAThousandClients) {
  const auto server = serve();
  std::vector<Client> silent;
  while (silent.size() < 1000) {
    Client client(path);
    if (client.isConnected()) {
      silent.push_back(std::move(client));
    } else {
      test::runLoopFor(std::chrono::milliseconds(1));  // until there is room in its queue
    }
  }
  Client client(path);
  ASSERT_TRUE(waitFor([&] {
    if (!client.isConnected()) client = Client(path);
    return client.isConnected();
  }));
  client.send("a request\n");
  EXPECT_EQ(client.answer(), "done\n");
  EXPECT_LE(server->connections(), RequestServer::Limits().connections);
  EXPECT_EQ(silent.front().answer(), "refused: too many requests at a time\n");
  silent.clear();
  EXPECT_TRUE(isEmpty(*server));
}

TEST_F(RequestServerTest, AnswersOnlyItsUsersProcesses) {
  const auto server = serve({.user = getuid() + 1});
  Client client(path);
  client.send("a request\n");
  EXPECT_EQ(client.answer(), "");
  EXPECT_TRUE(lines.empty());
}

TEST(LocalConnection, KnowsTheUserAtTheOtherSide) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
  const Descriptor one(ends[0]);
  Descriptor other(ends[1]);
  EXPECT_EQ(peerUser(one.get()), getuid());
  EXPECT_EQ(peerUser(STDIN_FILENO), std::nullopt);
  shutdown(other.get(), SHUT_WR);
  EXPECT_FALSE(hasPeerLeft(one.get()));
  other.reset();
  EXPECT_TRUE(hasPeerLeft(one.get()));
}

TEST(LocalConnection, TellsThatNobodyListens) {
  const auto deadline = std::chrono::steady_clock::now() + test::kPatience;
  using Outcome = LocalConnection::Outcome;
  const QTemporaryDir folder;
  const std::string path = folder.filePath(QStringLiteral("socket")).toStdString();
  EXPECT_EQ(LocalConnection(deadline).connect(path), Outcome::NobodyListens);
  EXPECT_EQ(LocalConnection(deadline).connect(""), Outcome::NobodyListens);
  EXPECT_EQ(LocalConnection(deadline).connect(path + std::string(200, 'x')), Outcome::Failed);
}

}  // namespace
}  // namespace zolt
