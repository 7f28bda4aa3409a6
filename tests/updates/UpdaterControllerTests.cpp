#include "updates/views/UpdaterController.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextBrowser>
#include <memory>

#include "updates/UpdateFixture.h"
#include "updates/views/UpdateWindow.h"

namespace zolt {
namespace {

using test::HttpReply;
using test::waitFor;
using Manner = HttpReply::Manner;

class UpdaterControllerTest : public test::UpdateTest {
 protected:
  UpdaterControllerTest() { environment.firstCheckDelay = std::chrono::milliseconds(20); }

  void start(bool startingUpdater = false) {
    controller.reset();
    controller = std::make_unique<UpdaterController>(
        startingUpdater, defaults, environment,
        UpdaterController::Outlets{.handOver =
                                       [this](const QString& path) {
                                         handedOver.append(path);
                                         contentHandedOver = contentOf(path);
                                         return true;
                                       },
                                   .openPage = [this](const QUrl& page) { pages.append(page); }});
  }
  /// The update windows that are on the screen.
  static QList<UpdateWindow*> windows() {
    QList<UpdateWindow*> shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* window = qobject_cast<UpdateWindow*>(widget);
      if (window && window->isVisible()) shown.append(window);
    }
    return shown;
  }
  /// Waits until there is one window on the screen, with this title, and returns it.
  UpdateWindow* window(const char* title) {
    const QString wanted = QString::fromUtf8(title);
    EXPECT_TRUE(waitFor([&] { return windows().size() == 1 && text("title") == wanted; })) << title;
    if (windows().size() != 1) return nullptr;
    // No event may be handled from here on: the next one may close the window.
    EXPECT_FALSE(windows().first()->isModal());
    return windows().first();
  }
  static QString text(const char* name) {
    const auto* label = windows().first()->findChild<QLabel*>(QString::fromLatin1(name));
    return label ? label->text() : QString();
  }
  static QPushButton* button(const char* name) {
    return windows().first()->findChild<QPushButton*>(QString::fromLatin1(name));
  }
  static void click(const char* name) {
    QPushButton* wanted = button(name);
    ASSERT_TRUE(wanted && wanted->isVisible() && wanted->isEnabled()) << name;
    QTest::mouseClick(wanted, Qt::LeftButton);
  }
  static QString notes() { return windows().first()->findChild<QTextBrowser*>()->toPlainText(); }
  bool noWindow() const { return windows().isEmpty(); }
  void expectNothingShown() {
    test::runLoopFor(std::chrono::milliseconds(150));
    EXPECT_TRUE(noWindow());
  }

  QStringList handedOver;
  QByteArray contentHandedOver;
  QList<QUrl> pages;
  std::unique_ptr<UpdaterController> controller;
};

TEST_F(UpdaterControllerTest, AnUpdateRunsFromTheMenuToTheInstallerByItsButtons) {
  package = package.repeated(20);
  serveFeed(packageItem("1.2", "<description>&lt;h2&gt;New&lt;/h2&gt;Things</description>"));
  servePackage();
  start();
  EXPECT_TRUE(controller->canCheckForUpdates());
  QSignalSpy changes(controller.get(), &UpdaterController::canCheckForUpdatesChanged);
  controller->checkForUpdates();
  EXPECT_FALSE(controller->canCheckForUpdates());
  EXPECT_EQ(changes.count(), 1);
  ASSERT_TRUE(window("Checking for updates..."));
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  EXPECT_EQ(text("text"),
            QStringLiteral("Zolt 1.2 is now available; you have 1.0. Would you like to download it now?"));
  EXPECT_EQ(notes(), QStringLiteral("New\nThings"));
  EXPECT_EQ(button("skip")->text(), QStringLiteral("Skip This Version"));
  EXPECT_EQ(button("remindLater")->text(), QStringLiteral("Remind Me Later"));
  EXPECT_EQ(button("install")->text(), QStringLiteral("Install Update"));
  EXPECT_TRUE(button("install")->isDefault());
  EXPECT_EQ(button("learnMore"), nullptr);
  click("install");
  ASSERT_TRUE(window("Downloading update..."));
  ASSERT_TRUE(waitFor([&] { return noWindow(); }));
  EXPECT_EQ(handedOver, QStringList{downloads + QStringLiteral("/Zolt.deb")});
  EXPECT_EQ(contentHandedOver, package);
  EXPECT_TRUE(controller->canCheckForUpdates());
  EXPECT_EQ(changes.count(), 2);
  controller.reset();
  EXPECT_EQ(downloadedFiles(), handedOver);
}

TEST_F(UpdaterControllerTest, MarkupInAVersionIsShownAsText) {
  serveFeed(packageItem("1.2", "<sparkle:shortVersionString>&lt;b&gt;1.2&lt;/b&gt;</sparkle:shortVersionString>"));
  start();
  controller->checkForUpdates();
  const UpdateWindow* offer = window("A new version of Zolt is available!");
  ASSERT_TRUE(offer);
  EXPECT_TRUE(text("text").startsWith(QLatin1String("Zolt <b>1.2</b> is now available")));
  EXPECT_EQ(offer->findChild<QLabel*>(QStringLiteral("text"))->textFormat(), Qt::PlainText);
}

TEST_F(UpdaterControllerTest, ReturnInstalls) {
  serveFeed(packageItem("1.2"));
  servePackage();
  start();
  controller->checkForUpdates();
  QTest::keyClick(window("A new version of Zolt is available!"), Qt::Key_Return);
  ASSERT_TRUE(waitFor([&] { return handedOver.size() == 1; }));
}

TEST_F(UpdaterControllerTest, ACheckByHandReportsAMissingFeed) {
  defaults.removeObject("SUFeedURL");
  start(true);
  controller->checkForUpdates();
  ASSERT_TRUE(window("Update Error!"));
  EXPECT_EQ(text("text"), QStringLiteral("No update feed is configured."));
  EXPECT_TRUE(controller->canCheckForUpdates());
  EXPECT_EQ(button("ok")->text(), QStringLiteral("OK"));
  click("ok");
  EXPECT_TRUE(noWindow());
}

TEST_F(UpdaterControllerTest, ACheckByHandReportsThatThereIsNothingNew) {
  serveFeed(packageItem("1.0"));
  start();
  controller->checkForUpdates();
  UpdateWindow* upToDate = window("You're up to date!");
  ASSERT_TRUE(upToDate);
  EXPECT_EQ(text("text"), QStringLiteral("Zolt 1.0 is currently the newest version available."));
  QTest::keyClick(upToDate, Qt::Key_Escape);
  EXPECT_TRUE(noWindow());
}

TEST_F(UpdaterControllerTest, ABadPackageIsReportedAndNothingIsKept) {
  serveFeed(packageItem("1.2"));
  serve("/Zolt.deb", {.body = QByteArray(package.size(), 'x')});
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  click("install");
  ASSERT_TRUE(window("Update Error!"));
  EXPECT_EQ(text("text"), sentenceOf(UpdateError::SignatureWrong));
  EXPECT_EQ(downloadedFiles(), QStringList());
  EXPECT_EQ(handedOver, QStringList());
  EXPECT_TRUE(controller->canCheckForUpdates());
}

TEST_F(UpdaterControllerTest, ADownloadShowsItsBytesAndCanBeCancelled) {
  package = QByteArray(3100000, 'x');
  serveFeed(packageItem("1.2", {}, "12000000", maker.signatureOf(package)));
  serve("/Zolt.deb", {.body = package, .announcesLength = false, .manner = Manner::Stalls});
  for (const bool byKey : {false, true}) {
    start();
    controller->checkForUpdates();
    ASSERT_TRUE(window("A new version of Zolt is available!"));
    click("install");
    UpdateWindow* downloading = window("Downloading update...");
    ASSERT_TRUE(downloading);
    ASSERT_TRUE(waitFor([&] { return text("text") == QLatin1String("3.1 MB of 12 MB"); }))
        << text("text").toStdString();
    EXPECT_TRUE(waitFor([&] { return downloading->findChild<QProgressBar*>()->value() == 258; }));
    EXPECT_EQ(downloading->findChild<QProgressBar*>()->maximum(), 1000);
    EXPECT_FALSE(downloadedFiles().isEmpty());
    EXPECT_EQ(button("cancel")->text(), QStringLiteral("Cancel"));
    byKey ? QTest::keyClick(downloading, Qt::Key_Escape) : click("cancel");
    EXPECT_TRUE(noWindow());
    EXPECT_TRUE(controller->canCheckForUpdates());
    EXPECT_EQ(downloadedFiles(), QStringList());
  }
}

TEST_F(UpdaterControllerTest, ACheckCanBeCancelled) {
  serve("/appcast.xml", {.manner = Manner::Silent});
  start();
  controller->checkForUpdates();
  UpdateWindow* checking = window("Checking for updates...");
  ASSERT_TRUE(checking);
  EXPECT_EQ(checking->findChild<QProgressBar*>()->maximum(), 0);
  click("cancel");
  EXPECT_TRUE(noWindow());
  EXPECT_TRUE(controller->canCheckForUpdates());
  expectNothingShown();
}

TEST_F(UpdaterControllerTest, NoCheckStartsDuringAnother) {
  serve("/appcast.xml", {.manner = Manner::Silent});
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("Checking for updates..."));
  controller->checkForUpdates();
  EXPECT_EQ(windows().size(), 1);
  ASSERT_TRUE(waitFor([&] { return server.requests().size() == 1; }));
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(server.requests().size(), 1);
}

TEST_F(UpdaterControllerTest, SkippingIsRememberedAndRemindingIsNot) {
  serveFeed(packageItem("1.2"));
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  click("remindLater");
  EXPECT_TRUE(noWindow());
  EXPECT_EQ(defaults.stringForKey("SUSkippedVersion"), std::nullopt);
  controller->checkForUpdates();
  UpdateWindow* offer = window("A new version of Zolt is available!");
  ASSERT_TRUE(offer);
  offer->close();
  EXPECT_TRUE(noWindow());
  EXPECT_TRUE(controller->canCheckForUpdates());
  EXPECT_EQ(defaults.stringForKey("SUSkippedVersion"), std::nullopt);
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  click("skip");
  EXPECT_TRUE(noWindow());
  EXPECT_EQ(defaults.stringForKey("SUSkippedVersion"), "1.2");
  EXPECT_TRUE(controller->canCheckForUpdates());
}

TEST_F(UpdaterControllerTest, ACriticalUpdateHasNoSkipButton) {
  serveFeed(packageItem("1.2", "<sparkle:criticalUpdate/>"));
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  EXPECT_EQ(button("skip"), nullptr);
  EXPECT_NE(button("remindLater"), nullptr);
}

TEST_F(UpdaterControllerTest, AnInformationalUpdateOpensItsPage) {
  serveFeed(test::informationalItem("1.2"));
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  EXPECT_EQ(button("install"), nullptr);
  EXPECT_EQ(button("learnMore")->text(), QStringLiteral("Learn More..."));
  EXPECT_TRUE(button("learnMore")->isDefault());
  click("learnMore");
  EXPECT_EQ(pages, QList<QUrl>{QUrl(QStringLiteral("https://example.org/1.2"))});
  EXPECT_TRUE(noWindow());
  EXPECT_TRUE(controller->canCheckForUpdates());
}

TEST_F(UpdaterControllerTest, ReleaseNotesLoadNothingAndTheirLinksOpenAfterAClick) {
  const QByteArray html =
      "<link rel='stylesheet' href='/style.css'><img src='/picture.png'><p><a href='https://example.org/more'>"
      "MMMMMMMMMMMM</a></p><script src='/script.js'></script>";
  serveFeed(packageItem("1.2", "<sparkle:releaseNotesLink>notes.html</sparkle:releaseNotesLink>"));
  serve("/notes.html", {.type = "text/html", .body = html});
  start();
  controller->checkForUpdates();
  UpdateWindow* offer = window("A new version of Zolt is available!");
  ASSERT_TRUE(offer);
  ASSERT_TRUE(waitFor([&] { return notes() == QLatin1String("MMMMMMMMMMMM"); })) << notes().toStdString();
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(server.requests(), (QStringList{QStringLiteral("/appcast.xml"), QStringLiteral("/notes.html")}));
  EXPECT_TRUE(pages.isEmpty());
  auto* view = offer->findChild<QTextBrowser*>();
  EXPECT_TRUE(view->isReadOnly());
  EXPECT_FALSE(view->loadResource(QTextDocument::ImageResource, QUrl(server.address(QStringLiteral("/x")))).isValid());
  QTextCursor cursor(view->document());
  cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, 4);
  QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->cursorRect(cursor).center());
  EXPECT_EQ(pages, QList<QUrl>{QUrl(QStringLiteral("https://example.org/more"))});
  EXPECT_EQ(notes(), QStringLiteral("MMMMMMMMMMMM"));
}

TEST_F(UpdaterControllerTest, MissingReleaseNotesAreReplacedByARemark) {
  serveFeed(packageItem("1.2", "<sparkle:releaseNotesLink>notes</sparkle:releaseNotesLink>"));
  serve("/notes", {.manner = Manner::Silent});
  start();
  controller->checkForUpdates();
  UpdateWindow* offer = window("A new version of Zolt is available!");
  ASSERT_TRUE(offer);
  const auto* view = offer->findChild<QTextBrowser*>();
  EXPECT_EQ(view->placeholderText(), QStringLiteral("Loading the release notes..."));
  ASSERT_TRUE(waitFor([&] { return server.requests().contains(QStringLiteral("/notes")); }));
  server.hangUp();
  EXPECT_TRUE(waitFor([&] { return view->placeholderText() == QLatin1String("This version has no release notes."); }));
}

TEST_F(UpdaterControllerTest, PlainReleaseNotesAreShownAsTheyAre) {
  serveFeed(packageItem("1.2", "<description sparkle:format='plain-text'>&lt;b&gt;a&lt;/b&gt;</description>"));
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  EXPECT_EQ(notes(), QStringLiteral("<b>a</b>"));
}

TEST_F(UpdaterControllerTest, ABackgroundCheckShowsNothingButAnOffer) {
  defaults.setBool("SUEnableAutomaticChecks", true);
  serve("/appcast.xml", {.status = 500});
  start(true);
  ASSERT_TRUE(waitFor([&] { return server.requests().size() == 1; }));
  expectNothingShown();
  serveFeed(packageItem("1.0"));
  defaults.removeObject("SULastCheckTime");
  ASSERT_TRUE(waitFor([&] { return server.requests().size() == 2; }));
  expectNothingShown();
  serveFeed(packageItem("1.2"));
  defaults.removeObject("SULastCheckTime");
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  click("skip");
  defaults.removeObject("SULastCheckTime");
  ASSERT_TRUE(waitFor([&] { return server.requests().size() == 4; }));
  expectNothingShown();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
}

TEST_F(UpdaterControllerTest, AControllerThatIsNotStartedChecksOnlyByHand) {
  defaults.setBool("SUEnableAutomaticChecks", true);
  defaults.setBool("SUHasLaunchedBefore", true);
  start(false);
  expectNothingShown();
  EXPECT_EQ(server.requests(), QStringList());
}

TEST_F(UpdaterControllerTest, TheSecondLaunchAsksAndTheAnswerIsKept) {
  serveFeed(packageItem("1.0"));
  start(true);
  expectNothingShown();
  EXPECT_TRUE(defaults.boolForKey("SUHasLaunchedBefore"));
  start(true);
  ASSERT_TRUE(window("Check for updates automatically?"));
  EXPECT_TRUE(controller->canCheckForUpdates());
  EXPECT_EQ(server.requests(), QStringList());
  click("checkAutomatically");
  EXPECT_TRUE(noWindow());
  EXPECT_EQ(defaults.stringForKey("SUEnableAutomaticChecks"), "true");
  EXPECT_TRUE(waitFor([&] { return server.requests().size() == 1; }));
  start(true);
  expectNothingShown();
}

TEST_F(UpdaterControllerTest, DecliningAutomaticChecksIsAnAnswerToo) {
  defaults.setBool("SUHasLaunchedBefore", true);
  start(true);
  ASSERT_TRUE(window("Check for updates automatically?"));
  click("dontCheck");
  EXPECT_EQ(defaults.stringForKey("SUEnableAutomaticChecks"), "false");
  start(true);
  expectNothingShown();
  EXPECT_EQ(server.requests(), QStringList());
}

TEST_F(UpdaterControllerTest, ClosingTheQuestionIsNotAnAnswer) {
  defaults.setBool("SUHasLaunchedBefore", true);
  start(true);
  UpdateWindow* question = window("Check for updates automatically?");
  ASSERT_TRUE(question);
  QTest::keyClick(question, Qt::Key_Escape);
  EXPECT_TRUE(noWindow());
  EXPECT_EQ(defaults.stringForKey("SUEnableAutomaticChecks"), std::nullopt);
  start(true);
  question = window("Check for updates automatically?");
  ASSERT_TRUE(question);
  question->close();
  EXPECT_EQ(defaults.stringForKey("SUEnableAutomaticChecks"), std::nullopt);
}

TEST_F(UpdaterControllerTest, AnUnrequestedWindowTakesNoKeysMeantForAnother) {
  serveFeed(packageItem("1.2"));
  defaults.setBool("SUEnableAutomaticChecks", true);
  QWidget terminal;
  terminal.show();
  terminal.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&terminal, test::kPatience.count()));
  start(true);
  UpdateWindow* offer = window("A new version of Zolt is available!");
  ASSERT_TRUE(offer);
  EXPECT_TRUE(offer->testAttribute(Qt::WA_ShowWithoutActivating));
  // Even if a window manager gives it the focus.
  QTest::keyClick(offer, Qt::Key_Return);
  QTest::keyClick(offer, Qt::Key_Space);
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_TRUE(offer->isVisible());
  EXPECT_EQ(server.requests().size(), 1) << "for the feed, not for the package";
  click("install");
  EXPECT_TRUE(waitFor([&] { return server.requests().size() == 2; }));
}

TEST_F(UpdaterControllerTest, AQuestionThatWasNotAnsweredIsAskedAgain) {
  serveFeed(packageItem("1.0"));
  defaults.setBool("SUHasLaunchedBefore", true);
  start(true);
  ASSERT_TRUE(window("Check for updates automatically?"));
  controller->checkForUpdates();
  ASSERT_TRUE(window("You're up to date!"));
  EXPECT_EQ(defaults.stringForKey("SUEnableAutomaticChecks"), std::nullopt);
  start(true);
  ASSERT_TRUE(window("Check for updates automatically?"));
  controller.reset();
  EXPECT_EQ(defaults.stringForKey("SUEnableAutomaticChecks"), std::nullopt);
}

TEST_F(UpdaterControllerTest, WithoutAFeedTheUserIsNotAsked) {
  defaults.removeObject("SUFeedURL");
  defaults.setBool("SUHasLaunchedBefore", true);
  start(true);
  expectNothingShown();
}

TEST_F(UpdaterControllerTest, QuittingDuringADownloadLeavesNothingBehind) {
  serveFeed(packageItem("1.2"));
  serve("/Zolt.deb", {.body = package.first(1000), .announcesLength = false, .manner = Manner::Stalls});
  start();
  controller->checkForUpdates();
  ASSERT_TRUE(window("A new version of Zolt is available!"));
  click("install");
  ASSERT_TRUE(waitFor([&] { return !downloadedFiles().isEmpty(); }));
  controller.reset();
  EXPECT_TRUE(noWindow());
  EXPECT_FALSE(QFile::exists(downloads));
}

TEST_F(UpdaterControllerTest, WindowsKeepTheirMarginsAndClipNothing) {
  serveFeed(packageItem("1.2"));
  start();
  controller->checkForUpdates();
  UpdateWindow* offer = window("A new version of Zolt is available!");
  ASSERT_TRUE(offer);
  EXPECT_EQ(offer->layout()->contentsMargins(), QMargins(20, 20, 20, 20));
  for (const QWidget* child : offer->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
    const QRect inner = offer->rect().adjusted(20, 20, -20, -20);
    EXPECT_TRUE(inner.contains(child->geometry())) << child->objectName().toStdString();
    const int height =
        child->hasHeightForWidth() ? child->heightForWidth(child->width()) : child->minimumSizeHint().height();
    EXPECT_GE(child->height(), height) << child->objectName().toStdString();
  }
  EXPECT_GE(offer->findChild<QTextBrowser*>()->minimumHeight(), 200);
  EXPECT_TRUE(offer->findChild<QLabel*>(QStringLiteral("title"))->font().bold());
}

}  // namespace
}  // namespace zolt
