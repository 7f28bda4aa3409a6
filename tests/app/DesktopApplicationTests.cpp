// The real program on a session bus of the tests' own.
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <memory>

#include "RunningZolt.h"
#include "support/PrivateBus.h"

namespace zolt {
namespace {

using test::waitFor;

const QString kName = QStringLiteral("org.zolt.Zolt");

class DesktopApplicationTest : public testing::Test {
 protected:
  void SetUp() override {
    if (!daemon.isThere()) GTEST_SKIP() << "dbus-daemon is not installed";
    zolt.set("DBUS_SESSION_BUS_ADDRESS", daemon.address());
    bus = std::make_unique<QDBusConnection>(daemon.connect());
    ASSERT_TRUE(bus->isConnected());
  }
  void TearDown() override {
    zolt.stop();
    bus.reset();
  }

  /// The name of the error; empty if the call succeeds.
  QString call(const char* method, const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        kName, QStringLiteral("/org/zolt/Zolt"), QStringLiteral("org.freedesktop.Application"), QLatin1String(method));
    message.setArguments(arguments);
    return bus->call(message, QDBus::BlockWithGui, test::kPatience.count()).errorName();
  }
  bool hasName() {
    QDBusMessage message =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    message << kName;
    return bus->call(message).arguments().value(0).toBool();
  }
  void start(QStringList arguments) {
    zolt.start(std::move(arguments));
    ASSERT_TRUE(waitFor([this] { return hasName(); }));
  }
  bool waitForFolder(std::size_t window, const QString& folder) {
    return waitFor([&] { return zolt.windows()[window]["tabs"][0]["terminals"][0]["folder"] == folder.toStdString(); });
  }

  test::PrivateBus daemon;
  std::unique_ptr<QDBusConnection> bus;
  test::RunningZolt zolt;
};

TEST_F(DesktopApplicationTest, OpensAWindowAtHomeWhenItIsActivated) {
  start({QStringLiteral("--full-emulation"), QStringLiteral("--working-directory"), QStringLiteral("/")});
  EXPECT_EQ(call("Activate", {QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("t")}}}), QString());
  ASSERT_EQ(zolt.windows().size(), 2U);
  EXPECT_TRUE(waitForFolder(0, QStringLiteral("/")));
  EXPECT_TRUE(waitForFolder(1, zolt.home()));
}

TEST_F(DesktopApplicationTest, OpensAWindowInEachFolderOnce) {
  const QString file = zolt.home() + QStringLiteral("/a file");
  QFile(file).open(QIODevice::WriteOnly);
  start({QStringLiteral("--full-emulation")});
  const QStringList urls{QStringLiteral("file:///"),
                         QStringLiteral("file://") + zolt.home() + QStringLiteral("/a%20file"),
                         QStringLiteral("file:///")};
  EXPECT_EQ(call("Open", {urls, QVariantMap()}), QString());
  ASSERT_EQ(zolt.windows().size(), 3U);
  EXPECT_TRUE(waitForFolder(1, QStringLiteral("/")));
  EXPECT_TRUE(waitForFolder(2, zolt.home()));
}

TEST_F(DesktopApplicationTest, OpensNothingWhereOneUrlCannotBeOpened) {
  start({QStringLiteral("--full-emulation")});
  for (const char* url : {"file:///not/there", "https://example.org/", "", "file://", "/\n"}) {
    EXPECT_EQ(call("Open", {QStringList{QStringLiteral("file:///"), QLatin1String(url)}, QVariantMap()}),
              QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"))
        << url;
  }
  EXPECT_EQ(zolt.windows().size(), 1U);
}

TEST_F(DesktopApplicationTest, PerformsTheActionsOfItsDesktopFile) {
  start({QStringLiteral("--full-emulation")});
  const auto act = [this](const char* name) {
    return call("ActivateAction", {QLatin1String(name), QVariantList(), QVariantMap()});
  };
  EXPECT_EQ(act("new-tab"), QString());
  EXPECT_EQ(zolt.windows()[0]["tabs"].size(), 2U);
  EXPECT_EQ(act("new-window"), QString());
  EXPECT_EQ(zolt.windows().size(), 2U);
  EXPECT_EQ(act("fly"), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
}

TEST_F(DesktopApplicationTest, OpensAWindowForANewTabWhereThereAreNoTabs) {
  start({QStringLiteral("--log")});
  EXPECT_EQ(call("ActivateAction", {QStringLiteral("new-tab"), QVariantList(), QVariantMap()}), QString());
  EXPECT_EQ(zolt.windows().size(), 2U);
}

TEST_F(DesktopApplicationTest, HasItsNameForAsLongAsItIsTheInstance) {
  start({});
  EXPECT_TRUE(zolt.stop());
  EXPECT_TRUE(waitFor([this] { return !hasName(); }));
  EXPECT_EQ(zolt.printed(), QByteArray());
}

TEST_F(DesktopApplicationTest, WaitsAsAServiceUntilAWindowIsWanted) {
  zolt.set("DBUS_STARTER_ADDRESS", QStringLiteral("unix:path=/a"));
  zolt.set("DBUS_STARTER_BUS_TYPE", QStringLiteral("session"));
  start({QStringLiteral("--service"), QStringLiteral("--full-emulation")});
  EXPECT_EQ(zolt.windows().size(), 0U);
  EXPECT_EQ(call("Activate", {QVariantMap()}), QString());
  ASSERT_EQ(zolt.windows().size(), 1U);
  const auto tab = zolt.done({QStringLiteral("new-tab"), QStringLiteral("--"), QStringLiteral("sh"),
                              QStringLiteral("-c"), QStringLiteral("env | grep -c DBUS_STARTER >count; sleep 1000")});
  EXPECT_TRUE(waitFor([&] {
    QFile count(zolt.home() + QStringLiteral("/count"));
    return count.open(QIODevice::ReadOnly) && count.readAll() == "0\n";
  }));
}

// Its process must not be held up by it either.
TEST_F(DesktopApplicationTest, SaysNothingWhereTheBusCannotBeReached) {
  zolt.set("DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=/not/there"));
  zolt.start({});
  EXPECT_EQ(zolt.windows().size(), 1U);
  EXPECT_TRUE(zolt.stop());
  EXPECT_EQ(zolt.printed(), QByteArray());
}

// The desktop finds one by the name of the other.
TEST(DesktopFile, HasTheNameThatIsTakenOnTheBus) {
  QFile file(QStringLiteral(ZOLT_PACKAGING "/org.zolt.Zolt.desktop"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_TRUE(file.readAll().contains("\nDBusActivatable=true\nActions=new-window;new-tab;\n"));
  QFile service(QStringLiteral(ZOLT_PACKAGING "/org.zolt.Zolt.service.in"));
  ASSERT_TRUE(service.open(QIODevice::ReadOnly));
  EXPECT_TRUE(service.readAll().contains("\nName=" + kName.toUtf8() + "\n"));
}

}  // namespace
}  // namespace zolt
