#include "updates/UpdateDriver.h"

#include <gtest/gtest.h>

#include <QThread>
#include <memory>

#include "updates/UpdateFixture.h"

namespace zolt {
namespace {

using test::HttpReply;
using Manner = HttpReply::Manner;
using State = UpdateDriver::State;

class UpdateDriverTest : public test::UpdateTest {
 protected:
  UpdateDriver& make() {
    driver.reset();
    context = std::make_unique<UpdateContext>(UpdateContext{UpdateSettings(defaults, {}), environment, {}});
    driver = std::make_unique<UpdateDriver>(*context, [this](const QString& path) {
      handedOver.append(path);
      return isInstallerThere;
    });
    QObject::connect(driver.get(), &UpdateDriver::failed, [this](const QString& text) { sentences.append(text); });
    QObject::connect(driver.get(), &UpdateDriver::foundNothingNew, [this] { ++nothingNew; });
    return *driver;
  }
  /// Makes a driver and has it check until it offers a version or is idle again.
  void check(CheckKind kind) {
    make().check(kind);
    ASSERT_TRUE(test::waitFor([&] { return driver->state() != State::Checking; }));
  }
  bool waitForIdle() {
    return test::waitFor([&] { return driver->state() == State::Idle; });
  }
  /// Expects the installation of an offer to fail with this error and to leave nothing behind.
  void expectInstallToFail(UpdateError error) {
    sentences.clear();
    check(CheckKind::ByHand);
    ASSERT_EQ(driver->state(), State::Offering) << sentences.join(u' ').toStdString();
    if (error == UpdateError::PackageTimedOut) context->environment.idleLimit = std::chrono::milliseconds(100);
    driver->install();
    ASSERT_TRUE(waitForIdle());
    EXPECT_EQ(sentences, QStringList{sentenceOf(error)});
    EXPECT_EQ(downloadedFiles(), QStringList());
    EXPECT_EQ(handedOver, QStringList());
  }
  void expectCheckToFail(UpdateError error) {
    for (const CheckKind kind : {CheckKind::ByHand, CheckKind::Background}) {
      sentences.clear();
      check(kind);
      EXPECT_EQ(driver->state(), State::Idle);
      EXPECT_EQ(sentences, kind == CheckKind::ByHand ? QStringList{sentenceOf(error)} : QStringList());
      EXPECT_FALSE(QFile::exists(downloads));
    }
  }

  QStringList sentences;
  QStringList handedOver;
  int nothingNew = 0;
  bool isInstallerThere = true;
  std::unique_ptr<UpdateContext> context;
  std::unique_ptr<UpdateDriver> driver;
};

TEST_F(UpdateDriverTest, AnUpdateIsFoundDownloadedVerifiedAndHandedOver) {
  serveFeed(packageItem("1.1"));
  servePackage();
  check(CheckKind::ByHand);
  ASSERT_EQ(driver->state(), State::Offering);
  EXPECT_EQ(driver->offer().item.version, QStringLiteral("1.1"));
  EXPECT_EQ(server.requests(), QStringList{QStringLiteral("/appcast.xml")});
  std::vector<State> states;
  std::int64_t received = 0;
  std::int64_t total = 0;
  QObject::connect(driver.get(), &UpdateDriver::stateChanged, [&] { states.push_back(driver->state()); });
  QObject::connect(driver.get(), &UpdateDriver::progressed, [&](std::int64_t bytes, std::int64_t all) {
    EXPECT_GT(bytes, received);
    received = bytes;
    total = all;
  });
  driver->install();
  ASSERT_TRUE(waitForIdle());
  EXPECT_EQ(states, (std::vector{State::Downloading, State::Verifying, State::Idle}));
  EXPECT_EQ(received, package.size());
  EXPECT_EQ(total, package.size());
  EXPECT_EQ(sentences, QStringList());
  const QString path = downloads + QStringLiteral("/Zolt.deb");
  EXPECT_EQ(handedOver, QStringList{path});
  EXPECT_EQ(contentOf(path), package);
  driver.reset();
  EXPECT_EQ(downloadedFiles(), QStringList{path});
}

TEST_F(UpdateDriverTest, BadFeedsAreExplainedExceptInTheBackground) {
  const QByteArray good = test::feedOf(packageItem("1.1"));
  struct Case {
    HttpReply reply;
    UpdateError error;
  };
  const Case cases[] = {
      {{.status = 404, .body = good}, UpdateError::FeedNotDelivered},
      {{.status = 500, .body = good}, UpdateError::FeedNotDelivered},
      {{.body = ""}, UpdateError::FeedEmpty},
      {{.body = "not found"}, UpdateError::FeedUnreadable},
      {{.body = good.chopped(10)}, UpdateError::FeedUnreadable},
      {{.body = "<!DOCTYPE rss [<!ENTITY a 'b'>]><rss/>"}, UpdateError::FeedUnreadable},
      {{.type = "text/html", .body = "<html/>"}, UpdateError::FeedNoAppcast},
      {{.body = test::feedOf("")}, UpdateError::FeedNothingUsable},
      {{.body = test::feedOf(packageItem("1.1", "<sparkle:channel>beta</sparkle:channel>"))},
       UpdateError::FeedNothingUsable},
      {{.body = good + QByteArray(1 << 20, ' ')}, UpdateError::FeedTooLarge},
      {{.body = good, .manner = Manner::Floods}, UpdateError::FeedTooLarge},
      {{.body = good, .manner = Manner::Breaks}, UpdateError::FeedUnreachable},
      {{.manner = Manner::Silent}, UpdateError::FeedTimedOut},
      {{.body = good, .announcedLength = 100000, .manner = Manner::Stalls}, UpdateError::FeedTimedOut},
      {{.body = good, .manner = Manner::Drips}, UpdateError::FeedTimedOut},
      {{.status = 302, .moreHeaders = "Location: http://example.org/\r\n"}, UpdateError::FeedRedirectedWeaker},
      {{.status = 302, .moreHeaders = "Location: /appcast.xml\r\n"}, UpdateError::FeedRedirectedTooOften},
  };
  for (const Case& bad : cases) {
    SCOPED_TRACE(sentenceOf(bad.error).toStdString());
    serve("/appcast.xml", bad.reply);
    const UpdateEnvironment generous = environment;
    if (bad.error == UpdateError::FeedTimedOut) {
      environment.idleLimit = std::chrono::milliseconds(100);
      environment.textLimit = std::chrono::milliseconds(400);
    }
    expectCheckToFail(bad.error);
    environment = generous;
  }
  for (const char* address : {"http://example.org/appcast.xml", "nonsense", "ftp://example.org/"}) {
    defaults.setString("SUFeedURL", address);
    expectCheckToFail(UpdateError::FeedNotSecure);
  }
}

TEST_F(UpdateDriverTest, BadPackagesAreExplainedAndNothingIsKept) {
  QByteArray changed = package;
  changed[1000] = 'X';
  struct Case {
    HttpReply reply;
    UpdateError error;
  };
  const Case cases[] = {
      {{.body = changed}, UpdateError::SignatureWrong},
      {{.status = 404, .body = package}, UpdateError::PackageNotDelivered},
      {{.status = 500, .body = package}, UpdateError::PackageNotDelivered},
      {{.body = ""}, UpdateError::PackageLengthDiffers},
      {{.body = "", .announcesLength = false}, UpdateError::PackageEmpty},
      {{.body = package.chopped(1)}, UpdateError::PackageLengthDiffers},
      {{.body = package.chopped(1), .announcesLength = false}, UpdateError::PackageLengthDiffers},
      {{.body = package + 'x'}, UpdateError::PackageLengthDiffers},
      {{.body = package + 'x', .announcesLength = false}, UpdateError::PackageLengthDiffers},
      {{.body = package, .manner = Manner::Floods}, UpdateError::PackageLengthDiffers},
      {{.body = package, .manner = Manner::Breaks}, UpdateError::PackageUnreachable},
      {{.manner = Manner::Silent}, UpdateError::PackageTimedOut},
      {{.body = package.first(100), .announcesLength = false, .manner = Manner::Stalls}, UpdateError::PackageTimedOut},
      {{.status = 302, .moreHeaders = "Location: http://example.org/\r\n"}, UpdateError::PackageRedirectedWeaker},
      {{.status = 302, .moreHeaders = "Location: /Zolt.deb\r\n"}, UpdateError::PackageRedirectedTooOften},
  };
  serveFeed(packageItem("1.1"));
  for (const Case& bad : cases) {
    SCOPED_TRACE(sentenceOf(bad.error).toStdString());
    serve("/Zolt.deb", bad.reply);
    expectInstallToFail(bad.error);
  }
}

TEST_F(UpdateDriverTest, APackageOfUnknownLengthIsLimitedTheSame) {
  environment.maximumPackageBytes = 1000;
  serveFeed("<item><sparkle:version>2</sparkle:version><enclosure url=\"Zolt.deb\" sparkle:edSignature=\"" +
            maker.signatureOf(package) + "\"/></item>");
  serve("/Zolt.deb", {.body = package, .manner = Manner::Floods});
  expectInstallToFail(UpdateError::PackageTooLarge);
}

TEST_F(UpdateDriverTest, APackageThatCannotBeVerifiedIsNotRequested) {
  const QByteArray length = QByteArray::number(package.size());
  servePackage();
  serveFeed(packageItem("1.1", {}, length, ""));
  expectInstallToFail(UpdateError::NotSigned);
  serveFeed(packageItem("1.1", {}, length, "AAAA"));
  expectInstallToFail(UpdateError::SignatureUnreadable);
  serveFeed(packageItem("1.1"));
  defaults.setString("SUPublicEDKey", "AAAA");
  expectInstallToFail(UpdateError::KeyInvalid);
  defaults.removeObject("SUPublicEDKey");
  expectInstallToFail(UpdateError::NoKey);
  EXPECT_FALSE(server.requests().contains(QStringLiteral("/Zolt.deb")));
  EXPECT_FALSE(QFile::exists(downloads));
}

TEST_F(UpdateDriverTest, ASignatureByAnotherKeyIsRejected) {
  serveFeed(packageItem("1.1", {}, QByteArray::number(package.size()), test::SigningKey(2).signatureOf(package)));
  servePackage();
  expectInstallToFail(UpdateError::SignatureWrong);
}

TEST_F(UpdateDriverTest, ADownloadFolderThatCannotBeCreatedIsReported) {
  QFile obstacle(folder.filePath(QStringLiteral("cache")));
  ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
  serveFeed(packageItem("1.1"));
  servePackage();
  expectInstallToFail(UpdateError::PackageNotSaved);
}

TEST_F(UpdateDriverTest, APackageWithoutAnInstallerIsRemoved) {
  isInstallerThere = false;
  serveFeed(packageItem("1.1"));
  servePackage();
  check(CheckKind::ByHand);
  driver->install();
  ASSERT_TRUE(waitForIdle());
  EXPECT_EQ(sentences, QStringList{sentenceOf(UpdateError::PackageNotOpened)});
  EXPECT_EQ(downloadedFiles(), QStringList());
}

TEST_F(UpdateDriverTest, CancellingADownloadRemovesItAtOnceAndTheNextOneIsComplete) {
  serveFeed(packageItem("1.1"));
  serve("/Zolt.deb", {.body = package.first(1000), .announcesLength = false, .manner = Manner::Stalls});
  check(CheckKind::ByHand);
  driver->install();
  ASSERT_TRUE(test::waitFor([&] { return !downloadedFiles().isEmpty(); }));
  driver->cancel();
  EXPECT_EQ(driver->state(), State::Idle);
  EXPECT_EQ(downloadedFiles(), QStringList());
  servePackage();
  driver->check(CheckKind::ByHand);
  ASSERT_TRUE(test::waitFor([&] { return driver->state() == State::Offering; }));
  driver->install();
  ASSERT_TRUE(waitForIdle());
  ASSERT_EQ(handedOver.size(), 1);
  EXPECT_EQ(contentOf(handedOver[0]), package);
  EXPECT_EQ(sentences, QStringList());
}

TEST_F(UpdateDriverTest, CancellingDuringTheVerificationHandsNothingOver) {
  serveFeed(packageItem("1.1"));
  servePackage();
  check(CheckKind::ByHand);
  QObject::connect(driver.get(), &UpdateDriver::stateChanged, driver.get(), [&] {
    if (driver->state() == State::Verifying) driver->cancel();
  });
  driver->install();
  ASSERT_TRUE(waitForIdle());
  test::runLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(handedOver, QStringList());
  EXPECT_EQ(downloadedFiles(), QStringList());
  EXPECT_EQ(sentences, QStringList());
}

TEST_F(UpdateDriverTest, CancellingAfterTheVerificationButBeforeItsResultArrivesHandsNothingOver) {
  serveFeed(packageItem("1.1"));
  servePackage();
  check(CheckKind::ByHand);
  QObject::connect(driver.get(), &UpdateDriver::stateChanged, driver.get(), [&] {
    if (driver->state() != State::Verifying) return;
    QThread::msleep(200);  // meanwhile the result is queued in the event loop
    driver->cancel();
  });
  driver->install();
  ASSERT_TRUE(waitForIdle());
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(handedOver, QStringList());
  EXPECT_EQ(downloadedFiles(), QStringList());
  EXPECT_EQ(sentences, QStringList());
}

TEST_F(UpdateDriverTest, AFailedDownloadIsRemovedBeforeTheSignal) {
  serve("/Zolt.deb", {.body = package});
  make();
  DownloadFolder own(downloads);
  AppcastEnclosure enclosure;
  enclosure.url = QUrl(server.address(QStringLiteral("/Zolt.deb")));
  enclosure.edSignature = QString::fromLatin1(test::SigningKey(2).signatureOf(package));
  const auto plan = planPackage(enclosure, maker.publicKey(), 1 << 30);
  ASSERT_TRUE(plan);
  PackageDownload download(*context, own, plan.value());
  std::optional<QStringList> left;
  QObject::connect(&download, &PackageDownload::failed, [&] { left = downloadedFiles(); });
  download.start();
  EXPECT_EQ(downloadedFiles().size(), 1);
  ASSERT_TRUE(test::waitFor([&] { return left.has_value(); }));
  EXPECT_EQ(*left, QStringList());
}

TEST_F(UpdateDriverTest, DestructionDuringADownloadLeavesNothingBehind) {
  serveFeed(packageItem("1.1"));
  serve("/Zolt.deb", {.body = package.first(1000), .announcesLength = false, .manner = Manner::Stalls});
  check(CheckKind::ByHand);
  driver->install();
  ASSERT_TRUE(test::waitFor([&] { return !downloadedFiles().isEmpty(); }));
  driver.reset();
  EXPECT_FALSE(QFile::exists(downloads));
}

TEST_F(UpdateDriverTest, TheLeftoversOfAKilledRunAreRemovedAtTheStart) {
  QDir().mkpath(downloads + QStringLiteral("/run-killed"));
  QFile left(downloads + QStringLiteral("/run-killed/package.part"));
  ASSERT_TRUE(left.open(QIODevice::WriteOnly));
  make();
  EXPECT_FALSE(QFile::exists(downloads));
}

TEST_F(UpdateDriverTest, OlderAndEqualVersionsAreNotOffered) {
  serveFeed(packageItem("1.0") + packageItem("0.9"));
  check(CheckKind::ByHand);
  EXPECT_EQ(driver->state(), State::Idle);
  EXPECT_EQ(nothingNew, 1);
  check(CheckKind::Background);
  EXPECT_EQ(driver->state(), State::Idle);
  EXPECT_EQ(nothingNew, 1);
  EXPECT_EQ(sentences, QStringList());
}

TEST_F(UpdateDriverTest, ASkippedVersionIsOfferedByHandOnly) {
  serveFeed(packageItem("1.1"));
  check(CheckKind::Background);
  ASSERT_EQ(driver->state(), State::Offering);
  driver->skip();
  EXPECT_EQ(driver->state(), State::Idle);
  EXPECT_EQ(defaults.stringForKey("SUSkippedVersion"), "1.1");
  check(CheckKind::Background);
  EXPECT_EQ(driver->state(), State::Idle);
  check(CheckKind::ByHand);
  EXPECT_EQ(driver->state(), State::Offering);
}

TEST_F(UpdateDriverTest, AVersionToBeRemindedOfIsOfferedAgain) {
  serveFeed(packageItem("1.1"));
  for (int i = 0; i < 2; ++i) {
    check(CheckKind::Background);
    ASSERT_EQ(driver->state(), State::Offering);
    driver->remindLater();
    EXPECT_EQ(driver->state(), State::Idle);
  }
  EXPECT_EQ(defaults.stringForKey("SUSkippedVersion"), std::nullopt);
}

TEST_F(UpdateDriverTest, ACriticalUpdateCannotBeSkipped) {
  serveFeed(packageItem("1.1", "<sparkle:criticalUpdate/>"));
  check(CheckKind::Background);
  ASSERT_EQ(driver->state(), State::Offering);
  EXPECT_TRUE(driver->offer().isCritical);
  driver->skip();
  EXPECT_EQ(driver->state(), State::Offering);
  EXPECT_EQ(defaults.stringForKey("SUSkippedVersion"), std::nullopt);
}

TEST_F(UpdateDriverTest, NoCheckStartsDuringAnother) {
  serveFeed(packageItem("1.1"));
  make().check(CheckKind::Background);
  driver->check(CheckKind::ByHand);
  EXPECT_EQ(driver->kind(), CheckKind::Background);
  ASSERT_TRUE(test::waitFor([&] { return driver->state() == State::Offering; }));
  driver->check(CheckKind::ByHand);
  test::runLoopFor(std::chrono::milliseconds(30));
  EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(UpdateDriverTest, ACheckCountsFromItsStartWhateverItsOutcome) {
  serve("/appcast.xml", {.status = 500});
  check(CheckKind::Background);
  EXPECT_EQ(defaults.stringForKey("SULastCheckTime"), "2026-06-10T12:00:00Z");
}

TEST_F(UpdateDriverTest, OnlyACheckByHandReportsAMissingFeed) {
  defaults.removeObject("SUFeedURL");
  check(CheckKind::Background);
  EXPECT_EQ(sentences, QStringList());
  check(CheckKind::ByHand);
  EXPECT_EQ(sentences, QStringList{QStringLiteral("No update feed is configured.")});
  EXPECT_EQ(defaults.stringForKey("SULastCheckTime"), std::nullopt);
}

TEST_F(UpdateDriverTest, ReleaseNotesComeFromTheirLinkOrElseFromTheDescription) {
  const QByteArray link =
      "<description>described</description><sparkle:releaseNotesLink>notes</sparkle:releaseNotesLink>";
  serveFeed(packageItem("1.1", link));
  serve("/notes", {.type = "text/plain", .body = "a < b"});
  check(CheckKind::ByHand);
  ASSERT_TRUE(test::waitFor([&] { return driver->offer().notes.has_value(); }));
  EXPECT_EQ(driver->offer().notes->text, QStringLiteral("a < b"));
  EXPECT_EQ(driver->offer().notes->format, ReleaseNotes::Format::Plain);
  serve("/notes", {.manner = Manner::Silent});
  check(CheckKind::ByHand);
  EXPECT_FALSE(driver->offer().notes);
  for (const HttpReply& bad : {HttpReply{.status = 404}, HttpReply{.body = QByteArray((1 << 20) + 1, 'x')},
                               HttpReply{.status = 302, .moreHeaders = "Location: http://example.org/\r\n"}}) {
    serve("/notes", bad);
    check(CheckKind::ByHand);
    ASSERT_TRUE(test::waitFor([&] { return driver->offer().notes.has_value(); }));
    EXPECT_EQ(driver->offer().notes->text, QStringLiteral("described"));
    EXPECT_EQ(sentences, QStringList());
  }
}

}  // namespace
}  // namespace zolt
