#pragma once

#include <gtest/gtest.h>

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QSettings>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "controls/ControlFixture.h"
#include "controls/Switch.h"
#include "settings/views/PreferencesWindow.h"
#include "support/WaitFor.h"

namespace zolt::test {

enum Tab { General, Appearance, Keys, Advanced };

/// The models that the preferences show, with settings in a temporary file.
struct PreferencesData {
  QTemporaryDir folder;
  UserDefaults defaults{folder.filePath(QStringLiteral("zolt.ini")).toStdString()};
  Config config{defaults};
  ShellManager shells{{}, [](const std::string& path) { return path != "/usr/local/bin/fish"; }};
};

/// The preferences window, with settings in a temporary file.
class PreferencesTest : public testing::Test, protected PreferencesData {
 protected:
  void SetUp() override {
    ASSERT_TRUE(folder.isValid());
    QObject::connect(&defaults, &UserDefaults::changed, &defaults, [this](const std::string& key) {
      if (key == "blurBackground") ++saves;  // written last by every save
      written.push_back(key);
    });
  }

  void open(int tab) {
    window = std::make_unique<PreferencesWindow>(config, defaults, shells);
    window->view().setSelectedTab(tab);
    shown(*window);
  }
  /// Runs the event loop so that the views catch up with changes.
  static void turn() { runLoopFor(std::chrono::milliseconds(15)); }

  QScrollArea& form() const {
    return *static_cast<QScrollArea*>(window->findChild<QStackedWidget*>()->currentWidget());
  }
  /// A control of the current form, scrolled into view.
  template <class T = QWidget>
  T& find(const char* name) const {
    T* found = form().findChild<T*>(QLatin1String(name));
    if (found == nullptr) throw std::runtime_error(std::string("no control ") + name);
    form().ensureWidgetVisible(found);
    return *found;
  }

  /// As a user would: clicks into the field and replaces its text.
  void replaceText(QLineEdit& field, const QString& text) {
    click(field);
    field.selectAll();
    if (text.isEmpty()) press(*window, Qt::Key_Delete);
    QTest::keyClicks(window->focusWidget(), text);
  }
  /// Neither the mouse nor the keyboard moves the switch.
  void expectFixed(const char* name, bool isOn) {
    Switch& control = find<Switch>(name);
    EXPECT_TRUE(control.isFixed()) << name;
    click(control);
    control.setFocus(Qt::TabFocusReason);
    press(*window, Qt::Key_Space);
    EXPECT_EQ(control.isChecked(), isOn) << name;
  }

  /// The content of the file, read from a copy, so that nothing in memory is involved.
  std::map<std::string, std::string> fileContent() {
    defaults.synchronize();
    const QString copy = folder.filePath(QStringLiteral("copy%1.ini").arg(++copies));
    QFile::copy(file(), copy);
    const QSettings settings(copy, QSettings::IniFormat);
    std::map<std::string, std::string> content;
    for (const QString& key : settings.allKeys()) {
      content[key.toStdString()] = settings.value(key).toString().toStdString();
    }
    return content;
  }
  QString file() const { return folder.filePath(QStringLiteral("zolt.ini")); }

  int saves = 0;
  std::vector<std::string> written;
  std::unique_ptr<PreferencesWindow> window;  // last: its destructor may write

 private:
  int copies = 0;
};

/// The titles of a form's sections and the labels of its rows, from top to bottom.
inline QStringList textsOf(const QWidget& form) {
  QStringList texts;
  QList<QLabel*> labels = form.findChildren<QLabel*>();
  const auto top = [&](const QLabel* each) { return each->mapTo(&form, QPoint()).y(); };
  std::ranges::stable_sort(labels, {}, top);
  for (const QLabel* label : labels) {
    if (label->objectName() != QLatin1String("value")) texts.append(label->text());
  }
  return texts;
}

}  // namespace zolt::test
