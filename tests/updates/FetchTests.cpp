#include "updates/Fetch.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <memory>

#include "support/ManualClock.h"
#include "updates/UpdateFixture.h"

namespace zolt {
namespace {

using test::HttpReply;
using Manner = HttpReply::Manner;

class FetchTest : public test::UpdateTest {
 protected:
  FetchTest() { content.open(QIODevice::WriteOnly); }

  FetchRequest request(const char* path) const {
    return {.url = QUrl(server.address(QString::fromLatin1(path))),
            .maximumBytes = 1000,
            .exactBytes = std::nullopt,
            .idleLimit = test::kPatience};
  }
  /// The outcome of a request; nothing if it succeeds.
  std::optional<FetchError> errorOf(const FetchRequest& wanted) {
    std::optional<FetchError> error;
    int ends = 0;
    fetch = std::make_unique<Fetch>(network.manager(), wanted, content);
    QObject::connect(fetch.get(), &Fetch::succeeded, [&] { ++ends; });
    QObject::connect(fetch.get(), &Fetch::failed, [&](FetchError told) {
      ++ends;
      error = told;
    });
    fetch->start();
    EXPECT_EQ(ends, 0) << "emitted before `start` returned";
    EXPECT_TRUE(test::waitFor([&] { return ends > 0; }));
    test::runLoopFor(std::chrono::milliseconds(5));
    EXPECT_EQ(ends, 1);
    return error;
  }

  UpdateNetwork network;
  QBuffer content;
  test::ManualClock clock;
  std::unique_ptr<Fetch> fetch;
};

TEST_F(FetchTest, TheContentAndItsTypeArrive) {
  serve("/a", {.type = "text/plain; charset=x", .body = "hello"});
  EXPECT_EQ(errorOf(request("/a")), std::nullopt);
  EXPECT_EQ(content.data(), "hello");
  EXPECT_EQ(fetch->contentType(), QStringLiteral("text/plain; charset=x"));
}

TEST_F(FetchTest, NoCookiesAreSentAndNothingIsDecompressed) {
  serve("/a", {.body = "hello", .moreHeaders = "Set-Cookie: who=you\r\n"});
  EXPECT_EQ(errorOf(request("/a")), std::nullopt);
  EXPECT_EQ(errorOf(request("/a")), std::nullopt);
  const QByteArray head = server.lastHead().toLower();
  EXPECT_FALSE(head.contains("cookie")) << head.toStdString();
  EXPECT_TRUE(head.contains("accept-encoding: identity")) << head.toStdString();
}

TEST_F(FetchTest, AddressesThatAreNotSecureAreNotRequestedAtAll) {
  FetchRequest wanted = request("/a");
  wanted.url = QUrl(QStringLiteral("http://192.0.2.1/a"));
  EXPECT_EQ(errorOf(wanted), FetchError::NotSecure);
  wanted.url = QUrl(QStringLiteral("file:///etc/hostname"));
  EXPECT_EQ(errorOf(wanted), FetchError::NotSecure);
}

TEST_F(FetchTest, NoProxyIsUsedForThisMachineItself) {
  serve("/a", {.body = "hello"});
  ASSERT_TRUE(qputenv("http_proxy", "http://127.0.0.1:1/"));
  EXPECT_EQ(errorOf(request("/a")), std::nullopt);
  qunsetenv("http_proxy");
}

TEST_F(FetchTest, AnyStatusBut200IsAFailure) {
  for (const int status : {201, 204, 206, 300, 304, 400, 401, 403, 404, 407, 500, 503}) {
    serve("/a", {.status = status, .body = status == 204 || status == 304 ? "" : "content"});
    EXPECT_EQ(errorOf(request("/a")), FetchError::NotDelivered) << status;
  }
  EXPECT_EQ(content.data(), QByteArray());
}

TEST_F(FetchTest, UpToFiveRedirectsAreFollowed) {
  serve("/end", {.body = "hello"});
  const char* const paths[] = {"/5", "/4", "/3", "/2", "/1", "/0"};
  QByteArray next = "/end";
  int status = 301;
  for (const char* path : paths) {
    serve(path, {.status = status, .body = "moved", .moreHeaders = "Location: " + next + "\r\n"});
    next = path;
    status = status == 303 ? 307 : status == 308 ? 301 : status + 1;
  }
  EXPECT_EQ(errorOf(request("/1")), std::nullopt);
  EXPECT_EQ(content.data(), "hello");
  EXPECT_EQ(errorOf(request("/0")), FetchError::RedirectedTooOften);
  serve("/round", {.status = 302, .moreHeaders = "Location: /round\r\n"});
  EXPECT_EQ(errorOf(request("/round")), FetchError::RedirectedTooOften);
}

TEST_F(FetchTest, RedirectsToAddressesThatAreNotSecureAreNotFollowed) {
  for (const QByteArray target :
       {"http://192.0.2.1/a", "http://example.org/", "file:///etc/hostname", "ftp://127.0.0.1/"}) {
    serve("/a", {.status = 302, .moreHeaders = "Location: " + target + "\r\n"});
    EXPECT_EQ(errorOf(request("/a")), FetchError::RedirectedWeaker) << target.toStdString();
  }
}

TEST_F(FetchTest, ARedirectIsFollowedEvenIfItsOwnBodyNeverEnds) {
  serve("/a", {.status = 302, .body = "moving", .moreHeaders = "Location: /end\r\n", .manner = Manner::Floods});
  serve("/end", {.body = "hello"});
  EXPECT_EQ(errorOf(request("/a")), std::nullopt);
  EXPECT_EQ(content.data(), "hello");
}

TEST_F(FetchTest, ContentBeyondTheLimitIsNeverAccepted) {
  serve("/a", {.body = QByteArray(1000, 'x')});
  EXPECT_EQ(errorOf(request("/a")), std::nullopt);
  content.buffer().clear();
  content.seek(0);
  serve("/a", {.body = QByteArray(1001, 'x')});
  EXPECT_EQ(errorOf(request("/a")), FetchError::TooLarge);
  serve("/a", {.body = QByteArray(1001, 'x'), .announcesLength = false});
  EXPECT_EQ(errorOf(request("/a")), FetchError::TooLarge);
  serve("/a", {.body = QByteArray(700, 'x'), .manner = Manner::Floods});
  EXPECT_EQ(errorOf(request("/a")), FetchError::TooLarge);
  serve("/a", {.body = "x", .announcedLength = 1LL << 40, .manner = Manner::Stalls});
  EXPECT_EQ(errorOf(request("/a")), FetchError::TooLarge);
  EXPECT_LE(content.data().size(), 1000);
}

TEST_F(FetchTest, ContentOfTheWrongLengthIsRejected) {
  FetchRequest wanted = request("/a");
  wanted.exactBytes = 10;
  for (const bool announces : {true, false}) {
    for (const int size : {9, 11, 500}) {
      serve("/a", {.body = QByteArray(size, 'x'), .announcesLength = announces});
      EXPECT_EQ(errorOf(wanted), FetchError::LengthDiffers) << size << announces;
    }
    serve("/a", {.body = QByteArray(10, 'x'), .announcesLength = announces});
    EXPECT_EQ(errorOf(wanted), std::nullopt) << announces;
  }
}

TEST_F(FetchTest, EmptyContentIsAFailure) {
  serve("/a", {.body = ""});
  EXPECT_EQ(errorOf(request("/a")), FetchError::Empty);
  serve("/a", {.body = "", .announcesLength = false});
  EXPECT_EQ(errorOf(request("/a")), FetchError::Empty);
}

TEST_F(FetchTest, ABrokenConnectionIsAFailure) {
  serve("/a", {.body = QByteArray(500, 'x'), .manner = Manner::Breaks});
  EXPECT_EQ(errorOf(request("/a")), FetchError::Unreachable);
  FetchRequest nobody = request("/a");
  {
    const test::HttpServer gone([](const QString&) { return HttpReply{}; });
    nobody.url = QUrl(gone.address(QStringLiteral("/a")));
  }
  EXPECT_EQ(errorOf(nobody), FetchError::Unreachable);
}

TEST_F(FetchTest, AServerThatDoesNotSpeakTlsIsAFailure) {
  FetchRequest wanted = request("/a");
  wanted.url.setScheme(QStringLiteral("https"));
  EXPECT_EQ(errorOf(wanted), FetchError::Unreachable);
}

TEST_F(FetchTest, AFetchWithoutDataForTooLongFails) {
  FetchRequest wanted = request("/a");
  wanted.idleLimit = std::chrono::milliseconds(60);
  serve("/a", {.manner = Manner::Silent});
  EXPECT_EQ(errorOf(wanted), FetchError::TimedOut);
  serve("/a", {.body = "part", .announcedLength = 100, .manner = Manner::Stalls});
  EXPECT_EQ(errorOf(wanted), FetchError::TimedOut);
}

TEST_F(FetchTest, SlowDataKeepsAFetchAliveUntilItsTotalLimit) {
  using namespace std::chrono_literals;
  FetchRequest wanted = request("/a");
  wanted.idleLimit = 3s;
  wanted.limit = 10s;
  serve("/a", {.body = "x", .manner = Manner::Drips});
  fetch = std::make_unique<Fetch>(network.manager(), wanted, content, nullptr, clock);
  std::optional<FetchError> error;
  std::int64_t received = 0;
  QObject::connect(fetch.get(), &Fetch::failed, [&](FetchError told) { error = told; });
  QObject::connect(fetch.get(), &Fetch::progressed, [&](std::int64_t bytes) { received = bytes; });
  fetch->start();
  for (auto elapsed = 0s; elapsed < 10s; elapsed += 2s) {
    const std::int64_t before = received;
    ASSERT_TRUE(test::waitFor([&] { return received > before || error; }));
    ASSERT_EQ(error, std::nullopt) << "after " << elapsed.count() << " seconds";
    clock.advance(2s);
  }
  EXPECT_EQ(error, FetchError::TimedOut);
  EXPECT_EQ(content.data().size(), received);
}

TEST_F(FetchTest, DestructionEndsAFetchWithoutASignal) {
  serve("/a", {.body = QByteArray(100, 'x'), .manner = Manner::Floods});
  bool told = false;
  fetch = std::make_unique<Fetch>(network.manager(), request("/a"), content);
  QObject::connect(fetch.get(), &Fetch::succeeded, [&] { told = true; });
  QObject::connect(fetch.get(), &Fetch::failed, [&] { told = true; });
  fetch->start();
  fetch.reset();
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_FALSE(told);
}

}  // namespace
}  // namespace zolt
