#include "settings/EmulationSettingsStore.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "support/WaitFor.h"

namespace zolt {
namespace {

class EmulationSettingsStoreTest : public testing::Test {
 protected:
  void SetUp() override {
    QObject::connect(&store, &EmulationSettingsStore::changed, &store, [this] {
      ++changes;
      last = store.current();
    });
  }
  // Timers of earlier turns have fired when one of a later turn has.
  static void turn() { test::runLoopFor(std::chrono::milliseconds(15)); }

  QTemporaryDir folder;
  std::string file = folder.filePath(QStringLiteral("zolt.ini")).toStdString();
  UserDefaults defaults{file};
  Config config{defaults};
  EmulationSettingsStore store{config, defaults};
  int changes = 0;
  EmulationSettings last;
};

TEST_F(EmulationSettingsStoreTest, TellsOnceATurnWhatHasChanged) {
  config.fontSize = 20;
  config.lineSpacing = 1.5;
  defaults.setBool("ligatures", false);
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(store.current().fontSize, 20) << "but is current at once";
  turn();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(last.fontSize, 20);
  EXPECT_EQ(last.lineSpacing, 1.5);
  EXPECT_FALSE(last.ligatures);
  config.lineSpacing = 1.6;
  turn();
  EXPECT_EQ(changes, 2);
}

TEST_F(EmulationSettingsStoreTest, SaysNothingIfNothingDiffers) {
  config.fontSize = 14;
  config.cursorBlink = false;
  config.cursorBlink = true;
  defaults.setString("selectedTheme", "Other");
  defaults.setBool("ligatures", true);
  defaults.setString("minimumContrast", "nonsense");
  turn();
  EXPECT_EQ(changes, 0);
}

TEST_F(EmulationSettingsStoreTest, KnowsWhetherTheFullEmulationIsOn) {
  EXPECT_FALSE(store.isOn());
  defaults.setBool("fullEmulation", true);
  EXPECT_TRUE(store.isOn());
  turn();
  EXPECT_EQ(changes, 1);
  defaults.removeObject("fullEmulation");
  EXPECT_FALSE(store.isOn());
  turn();
  EXPECT_EQ(changes, 2);
}

TEST_F(EmulationSettingsStoreTest, StoresASettingUnderItsKey) {
  store.set(&EmulationSettings::boldIsBright, true);
  store.set(&EmulationSettings::minimumContrast, 6.5);
  store.set(&EmulationSettings::wordSeparators, " :\u2502\"");
  defaults.synchronize();
  UserDefaults reader(file);
  EXPECT_EQ(reader.stringForKey("boldIsBright"), "true");
  EXPECT_EQ(reader.stringForKey("minimumContrast"), "6.5");
  EXPECT_EQ(reader.stringForKey("wordSeparators"), " :\u2502\"");
  EXPECT_TRUE(store.current().boldIsBright);
}

TEST_F(EmulationSettingsStoreTest, AResetRemovesEverySettingButTheShellTheCommandAndTheLineSpacing) {
  const std::string text = "5 of them";  // yes, a number, a text
  for (const EmulationRow& row : emulationRows()) {
    defaults.setString(row.key, text);
  }
  defaults.setBool("fullEmulation", true);
  config.fontSize = 20;
  store.reset();
  EmulationSettings expected;
  expected.startupShell = text;
  expected.startupCommand = text;
  expected.lineSpacing = 2;
  expected.fontSize = 20;
  EXPECT_EQ(store.current(), expected);
  EXPECT_EQ(defaults.stringForKey("audibleBell"), std::nullopt);
  EXPECT_TRUE(store.isOn());
}

}  // namespace
}  // namespace zolt
