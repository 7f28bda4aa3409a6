#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>
#include <memory>

#include "brew/BrewFixture.h"
#include "brew/views/BrewSidebarView.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// A sidebar in its own window, with a manager that belongs to the test.
class SidebarTest : public BrewTest {
 protected:
  void show() {
    sidebar = std::make_unique<BrewSidebarView>(*manager);
    sidebar->resize(250, 560);
    sidebar->show();
    sidebar->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(sidebar.get(), test::kPatience.count()));
  }
  void showIdle() {
    makeIdleManager();
    show();
  }

  template <class T>
  T* part(const char* name) {
    return sidebar->findChild<T*>(QLatin1String(name));
  }
  QListView* list() { return part<QListView>("packages"); }
  // The rows from top to bottom.
  QStringList rows() {
    QStringList texts;
    for (int row = 0; row < list()->model()->rowCount(); ++row) {
      texts << list()->model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
    }
    return texts;
  }
  void choose(int tab) { QTest::mouseClick(part<SegmentedPicker>("segments")->segment(tab), Qt::LeftButton); }
  void type(const char* text) {
    part<QLineEdit>("searchPackages")->setFocus();
    QTest::keyClicks(part<QLineEdit>("searchPackages"), QLatin1String(text));
  }
  QMenu* openMenu(int row) {
    const QPoint at = list()->visualRect(list()->model()->index(row, 0)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, list()->viewport()->mapToGlobal(at));
    QApplication::sendEvent(list()->viewport(), &event);
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }
  static QStringList textsOf(const QMenu& menu) {
    QStringList texts;
    const QList<QAction*> actions = menu.actions();
    for (const QAction* action : actions) {
      texts << action->text();
    }
    return texts;
  }
  bool waitForRows(const QStringList& expected) {
    return waitFor([&] { return rows() == expected; });
  }
  static QStringList words(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts) {
      list << QString::fromUtf8(text);
    }
    return list;
  }

  std::unique_ptr<BrewSidebarView> sidebar;
};

}  // namespace zolt::test
