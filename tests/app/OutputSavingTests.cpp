#include "app/OutputSaving.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QMessageBox>

#include "AppFixture.h"
#include "app/ActionChain.h"
#include "support/ManualClock.h"

namespace zolt {
namespace {

using test::waitFor;

class OutputSavingTest : public test::AppDelegateTest {
 protected:
  OutputSavingTest() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }
  ~OutputSavingTest() override { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false); }

  void SetUp() override {
    delegate.openWindow(child({"wait"}));
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window(0), test::kPatience.count()));
    ASSERT_TRUE(waitForText(window(0), "waiting"));
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("out")));
  }
  TerminalNSTextView& view() { return window(0).contentViewController().rootView().textView(); }
  OutputSaving& saving() { return window(0).outputSaving(); }
  // So much that saving it takes a while.
  void printALot() {
    const AttributedString line(std::string(1 << 20, 'x') + '\n', TextAttributes());
    for (int i = 0; i < 300; ++i) {
      view().append(line);
    }
  }
  template <class Widget>
  Widget* shownChild() {
    const QList<Widget*> found = window(0).findChildren<Widget*>();
    for (Widget* each : found) {
      if (each->isVisible()) return each;
    }
    return nullptr;
  }
  QFileDialog* openDialog() {
    window(0).activateWindow();
    EXPECT_TRUE(waitFor([this] { return QApplication::focusWidget() == &view(); }));
    EXPECT_TRUE(actions.sendAction("saveOutputAs"));
    QFileDialog* dialog = shownChild<QFileDialog>();
    EXPECT_TRUE(dialog != nullptr && QTest::qWaitForWindowActive(dialog, test::kPatience.count()));
    return dialog;
  }
  static QLineEdit* nameField(QFileDialog& dialog) {
    return dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
  }
  static void choose(QFileDialog& dialog, const QString& file) {
    nameField(dialog)->setText(file);  // typing would open the completion list, which swallows the first click
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save), Qt::LeftButton);
  }
  static void chooseFilter(QFileDialog& dialog, const char* filter) {
    dialog.selectNameFilter(QString::fromLatin1(filter));
    Q_EMIT dialog.filterSelected(QString::fromLatin1(filter));
  }
  bool waitUntilSaved() {
    return waitFor([this] { return !saving().isSaving(); });
  }
  QString out(const char* name) const { return folder.filePath(QStringLiteral("out/") + QString::fromLatin1(name)); }
  QStringList names() const {
    return QDir(folder.filePath(QStringLiteral("out"))).entryList(QDir::Files | QDir::Hidden);
  }
  static std::string content(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(none)";
  }

  ActionChain actions{{&delegate}};
};

TEST_F(OutputSavingTest, ProposesANameWithTheTime) {
  EXPECT_EQ(proposedOutputName(QDateTime(QDate(2026, 11, 21), QTime(10, 43))),
            QStringLiteral("Zolt Output 2026-11-21 at 10.43.txt"));
}

TEST_F(OutputSavingTest, IsAvailableInATerminalWindowOnly) {
  EXPECT_TRUE(actions.isEnabled("saveOutputAs"));
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other, test::kPatience.count()));
  EXPECT_FALSE(actions.isEnabled("saveOutputAs"));
}

TEST_F(OutputSavingTest, AsksForTheFileWithoutBlocking) {
  QFileDialog* dialog = openDialog();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(dialog->acceptMode(), QFileDialog::AcceptSave);
  EXPECT_EQ(dialog->nameFilters(),
            (QStringList{QStringLiteral("Plain Text (*.txt)"), QStringLiteral("Text with Colours (*.ansi)")}));
  EXPECT_TRUE(nameField(*dialog)->text().startsWith(QStringLiteral("Zolt Output 2")));
  EXPECT_TRUE(nameField(*dialog)->text().endsWith(QStringLiteral(".txt")));
  QTest::keyClick(dialog, Qt::Key_Escape);
  EXPECT_TRUE(waitFor([this] { return shownChild<QFileDialog>() == nullptr; }));
  EXPECT_FALSE(saving().isSaving());
}

TEST_F(OutputSavingTest, SavesPlainText) {
  view().append(ANSIParser().parse("\x1B[32mgreen"));
  choose(*openDialog(), out("name"));
  EXPECT_TRUE(saving().isSaving());
  ASSERT_TRUE(waitUntilSaved());
  EXPECT_EQ(content(out("name.txt")), shown(window(0)));
  EXPECT_EQ(names(), QStringList(QStringLiteral("name.txt")));
  EXPECT_EQ(shownChild<SavePanel>(), nullptr);
}

TEST_F(OutputSavingTest, SavesTextWithColoursByItsFilter) {
  view().append(ANSIParser().parse("\x1B[32mgreen"));
  QFileDialog* dialog = openDialog();
  chooseFilter(*dialog, "Text with Colours (*.ansi)");
  EXPECT_TRUE(nameField(*dialog)->text().endsWith(QStringLiteral(".ansi"))) << nameField(*dialog)->text().toStdString();
  choose(*dialog, out("name"));
  ASSERT_TRUE(waitUntilSaved());
  EXPECT_TRUE(content(out("name.ansi")).ends_with("\x1B[32mgreen\x1B[0m"));
}

TEST_F(OutputSavingTest, RemembersTheFolder) {
  choose(*openDialog(), out("first"));
  ASSERT_TRUE(waitUntilSaved());
  const QFileDialog* dialog = openDialog();
  EXPECT_EQ(dialog->directory().canonicalPath(), QDir(folder.filePath(QStringLiteral("out"))).canonicalPath());
}

TEST_F(OutputSavingTest, ForgetsAFolderThatIsGone) {
  choose(*openDialog(), out("first"));
  ASSERT_TRUE(waitUntilSaved());
  ASSERT_TRUE(QDir(folder.filePath(QStringLiteral("out"))).removeRecursively());
  EXPECT_EQ(openDialog()->directory().canonicalPath(), QDir::home().canonicalPath());
}

TEST_F(OutputSavingTest, ShowsAPanelAfterAWhile) {
  test::ManualClock clock;
  OutputSaving slow(window(0).contentViewController().rootView(), clock);
  slow.save(out("slow.txt"), OutputFormat::WithColours);
  // The end is reported by the event loop, which does not run meanwhile: to this thread the save is still in progress.
  clock.advance(OutputSaving::panelDelay - std::chrono::microseconds(1));
  EXPECT_EQ(shownChild<SavePanel>(), nullptr);
  clock.advance(std::chrono::microseconds(1));
  EXPECT_NE(shownChild<SavePanel>(), nullptr);
  EXPECT_TRUE(slow.isSaving());
  EXPECT_EQ(QApplication::focusWidget(), &view()) << "the panel must not take the keyboard";
  ASSERT_TRUE(waitFor([&] { return !slow.isSaving(); }));
  EXPECT_EQ(shownChild<SavePanel>(), nullptr);
  EXPECT_EQ(content(out("slow.txt")), shown(window(0)));
}

TEST_F(OutputSavingTest, ShowsNoPanelWhenItEndsBeforeThat) {
  test::ManualClock clock;
  OutputSaving quick(window(0).contentViewController().rootView(), clock);
  quick.save(out("quick.txt"), OutputFormat::PlainText);
  clock.advance(OutputSaving::panelDelay - std::chrono::microseconds(1));
  ASSERT_TRUE(waitFor([&] { return !quick.isSaving(); }));
  clock.advance(std::chrono::hours(1));
  EXPECT_EQ(shownChild<SavePanel>(), nullptr);
}

TEST_F(OutputSavingTest, IsCancelledInThePanel) {
  printALot();
  saving().save(out("file.txt"), OutputFormat::WithColours);
  actions.sendAction("saveOutputAs");
  ASSERT_EQ(shownChild<QFileDialog>(), nullptr) << "chosen once more it goes to the panel";
  ASSERT_NE(shownChild<SavePanel>(), nullptr);
  ASSERT_TRUE(shownChild<SavePanel>()->isAncestorOf(QApplication::focusWidget()));
  window(0).contentViewController().rootView().setShowsBrewSidebar(true);  // next in line for the keyboard focus
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(saving().isSaving());
  EXPECT_EQ(shownChild<SavePanel>(), nullptr);
  EXPECT_EQ(QApplication::focusWidget(), &view());
  EXPECT_TRUE(waitFor([this] { return names().isEmpty(); }));
  EXPECT_TRUE(waitFor([this] { return saving().findChild<OutputSaver*>() == nullptr; }));
  EXPECT_EQ(names(), QStringList());
}

TEST_F(OutputSavingTest, CanStartAgainWhileACancelledSaveEnds) {
  printALot();
  saving().save(out("first.txt"), OutputFormat::WithColours);
  saving().cancel();
  saving().save(out("second.txt"), OutputFormat::PlainText);
  ASSERT_TRUE(waitUntilSaved());
  EXPECT_EQ(names(), QStringList(QStringLiteral("second.txt")));
}

TEST_F(OutputSavingTest, IgnoresTheEndOfACancelledSave) {
  saving().save(out("first.txt"), OutputFormat::PlainText);
  while (names() != QStringList(QStringLiteral("first.txt"))) {
    QTest::qSleep(1);  // finished, but not yet reported
  }
  saving().cancel();
  printALot();
  saving().save(out("second.txt"), OutputFormat::PlainText);
  ASSERT_TRUE(waitFor([this] { return saving().findChildren<OutputSaver*>().size() == 1; }));
  EXPECT_TRUE(saving().isSaving());
  ASSERT_TRUE(waitUntilSaved());
  EXPECT_EQ(names().size(), 2);
}

TEST_F(OutputSavingTest, ReportsAnErrorInAMessage) {
  saving().save(out("no/such.txt"), OutputFormat::PlainText);
  ASSERT_TRUE(waitFor([this] { return shownChild<QMessageBox>() != nullptr; }));
  auto* box = shownChild<QMessageBox>();
  EXPECT_FALSE(saving().isSaving());
  EXPECT_EQ(box->text(), QStringLiteral("The output was not saved."));
  EXPECT_EQ(box->informativeText(), QStringLiteral("The folder for “such.txt” does not exist."));
  QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
  EXPECT_TRUE(waitFor([this] { return shownChild<QMessageBox>() == nullptr; }));
}

TEST_F(OutputSavingTest, EndsWithItsWindow) {
  printALot();
  saving().save(out("file.txt"), OutputFormat::WithColours);
  ASSERT_TRUE(waitFor([this] { return !names().isEmpty(); }));
  window(0).close();
  EXPECT_FALSE(saving().isSaving());
  EXPECT_TRUE(waitFor([this] { return saving().findChild<OutputSaver*>() == nullptr; }));
  EXPECT_EQ(names(), QStringList());
}

TEST_F(OutputSavingTest, ClosesItsDialogWithItsWindow) {
  const QPointer<QFileDialog> dialog = openDialog();
  window(0).close();
  EXPECT_TRUE(waitFor([&] { return dialog.isNull(); }));
}

TEST_F(OutputSavingTest, LeavesNothingBehindWhenTheApplicationEnds) {
  auto other = std::make_unique<AppDelegate>(config, defaults, [](TerminalWindow&) {});
  TerminalWindow& last = other->openWindow(child({"wait"}));
  TerminalNSTextView& text = last.contentViewController().rootView().textView();
  const AttributedString line(std::string(1 << 20, 'x') + '\n', TextAttributes());
  for (int i = 0; i < 300; ++i) {
    text.append(line);
  }
  last.outputSaving().save(out("one.txt"), OutputFormat::WithColours);
  ASSERT_TRUE(waitFor([this] { return !names().isEmpty(); }));
  other.reset();
  EXPECT_EQ(names(), QStringList());
}

}  // namespace
}  // namespace zolt
