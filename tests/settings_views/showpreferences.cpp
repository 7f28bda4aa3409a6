// Saves a picture of the preferences window, with its own settings in a temporary folder:
// showpreferences TAB light|dark FILE.png [SCALE [SCROLL [KEYS [full]]]]
// TAB is the tab's index, SCROLL how far down its form is scrolled, in logical pixels, KEYS how often the Tab key is
// pressed; "full" turns the full emulation on.
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

#include "settings/views/PreferencesWindow.h"
#include "support/Palettes.h"

int main(int argc, char** argv) {
  if (argc < 4) {
    std::fputs("usage: showpreferences TAB light|dark FILE.png [SCALE [SCROLL [KEYS [full]]]]\n", stderr);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  if (argc > 4) qputenv("QT_SCALE_FACTOR", argv[4]);
  QApplication application(argc, argv);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  if (qstrcmp(argv[2], "dark") == 0) QApplication::setPalette(zolt::test::darkPalette());

  const QTemporaryDir folder;
  zolt::UserDefaults defaults(folder.filePath(QStringLiteral("zolt.ini")).toStdString());
  defaults.setString("startupShell", "/bin/sh");
  if (argc > 7 && qstrcmp(argv[7], "full") == 0) defaults.setBool(zolt::kFullEmulationKey, true);
  zolt::Config config(defaults);
  zolt::ShellManager shells({}, [](const std::string&) { return true; });
  zolt::PreferencesWindow window(config, defaults, shells);
  window.view().setSelectedTab(QByteArray(argv[1]).toInt());
  window.show();
  QTest::qWait(50);
  for (int key = 0; argc > 6 && key < QByteArray(argv[6]).toInt(); ++key) {
    QTest::keyClick(window.focusWidget() == nullptr ? &window : window.focusWidget(), Qt::Key_Tab);
  }
  if (argc > 5) {
    const auto* form = static_cast<QScrollArea*>(window.findChild<QStackedWidget*>()->currentWidget());
    form->verticalScrollBar()->setValue(QByteArray(argv[5]).toInt());
  }
  QTest::qWait(50);
  return window.grab().save(QString::fromLocal8Bit(argv[3])) ? 0 : 1;
}
