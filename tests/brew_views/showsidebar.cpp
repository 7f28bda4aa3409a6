// Saves a picture of the Homebrew sidebar: showsidebar TAB TEXT light|dark BREW FILE.png
// TAB is the segment's index, TEXT is typed into its field, BREW is the brew to run.
#include <QApplication>
#include <QTest>
#include <cstdio>

#include "brew/BrewCommands.h"
#include "brew/views/BrewSidebarView.h"
#include "desktop/DesktopPalette.h"
#include "support/WaitFor.h"

int main(int argc, char** argv) {
  if (argc != 6) {
    std::fputs("usage: showsidebar TAB TEXT light|dark BREW FILE.png\n", stderr);
    return 2;
  }
  QApplication application(argc, argv);
  QApplication::setPalette(qstrcmp(argv[3], "dark") == 0 ? zolt::darkPalette() : zolt::lightPalette());
  zolt::BrewManager manager({argv[4]}, zolt::WorkerQueue::utility());
  zolt::BrewSidebarView sidebar(manager);
  sidebar.resize(250, 600);
  sidebar.show();
  QTest::mouseClick(sidebar.findChild<zolt::SegmentedPicker*>()->segment(QByteArray(argv[1]).toInt()), Qt::LeftButton);
  const auto isAtRest = [&] {
    zolt::test::runLoopFor(std::chrono::milliseconds(100));
    const bool atRest = zolt::test::waitFor([&] { return zolt::test::brewCommands().empty() && !manager.isLoading(); });
    zolt::test::runLoopFor(std::chrono::milliseconds(200));
    return atRest;
  };
  if (!isAtRest()) return 1;
  QTest::keyClicks(sidebar.findChild<QLineEdit*>(), QString::fromUtf8(argv[2]));
  const bool atRest = isAtRest();
  if (QWidget* field = QApplication::focusWidget()) field->clearFocus();
  return atRest && sidebar.grab().save(QString::fromLocal8Bit(argv[5])) ? 0 : 1;
}
