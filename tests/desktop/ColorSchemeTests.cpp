#include "desktop/ColorScheme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QProcess>
#include <QStandardPaths>
#include <optional>
#include <vector>

#include "desktop/DesktopPalette.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

using Preference = ColorScheme::Preference;

class ColorSchemeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (bus) return;
    bus = std::make_unique<test::PrivateBus>();
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus->address().toUtf8());
  }
  static void TearDownTestSuite() { bus.reset(); }
  void TearDown() override {
    portal.closeWriteChannel();
    portal.waitForFinished();
  }

  void startPortal(QStringList arguments) {
    portal.start(QStringLiteral(ZOLT_FAKE_PORTAL), arguments);
    ASSERT_TRUE(portal.waitForReadyRead(10'000));
    ASSERT_EQ(portal.readLine(), "ready\n");
  }
  void prefer(const char* number) { portal.write(QByteArray(number) + "\n"); }
  bool waitUntil(const ColorScheme& scheme, Preference preference) {
    return test::waitFor([&] { return scheme.preference() == preference; });
  }

  // For all tests: the toolkit looks for it once.
  static inline std::unique_ptr<test::PrivateBus> bus;
  QProcess portal;
};

TEST_F(ColorSchemeTest, IsWhatTheDesktopPrefers) {
  startPortal({QStringLiteral("1")});
  const ColorScheme scheme;
  EXPECT_EQ(scheme.preference(), std::nullopt) << "nobody waits for the answer";
  EXPECT_TRUE(waitUntil(scheme, Preference::Dark));
}

TEST_F(ColorSchemeTest, FollowsTheDesktop) {
  startPortal({QStringLiteral("2")});
  const ColorScheme scheme;
  ASSERT_TRUE(waitUntil(scheme, Preference::Light));
  prefer("1");
  EXPECT_TRUE(waitUntil(scheme, Preference::Dark));
  prefer("0");
  EXPECT_TRUE(waitUntil(scheme, Preference::None));
  prefer("77");
  prefer("2");
  EXPECT_TRUE(waitUntil(scheme, Preference::Light));
}

TEST_F(ColorSchemeTest, AsksAnOlderPortalInItsOwnWay) {
  startPortal({QStringLiteral("--version-1"), QStringLiteral("1")});
  const ColorScheme scheme;
  EXPECT_TRUE(waitUntil(scheme, Preference::Dark));
}

TEST_F(ColorSchemeTest, SaysNothingWithoutAPortal) {
  ColorScheme scheme;
  int told = 0;
  QObject::connect(&scheme, &ColorScheme::changed, &scheme, [&] { ++told; });
  test::runLoopFor(std::chrono::milliseconds(200));
  EXPECT_EQ(told, 0);
}

TEST_F(ColorSchemeTest, ChangesTheApplicationsPaletteWhereItIsOfTheOtherKind) {
  const QPalette native = QApplication::palette();
  ASSERT_FALSE(isDark(native));
  startPortal({QStringLiteral("1")});
  const DesktopPalette palette;
  EXPECT_TRUE(test::waitFor([] { return isDark(QApplication::palette()); }));
  prefer("2");
  EXPECT_TRUE(test::waitFor([&] { return QApplication::palette() == native; })) << "the desktop's own fits";
  prefer("1");
  EXPECT_TRUE(test::waitFor([] { return isDark(QApplication::palette()); }));
  prefer("0");
  EXPECT_TRUE(test::waitFor([&] { return QApplication::palette() == native; }));
}

// WCAG 2.1, relative luminance and contrast.
double luminance(const QColor& color) {
  const auto linear = [](double channel) {
    return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

TEST(DesktopPalettes, AreReadableOnEveryGround) {
  const std::vector<std::pair<QPalette::ColorRole, std::vector<QPalette::ColorRole>>> grounds{
      {QPalette::WindowText, {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Midlight}},
      {QPalette::Text, {QPalette::Base, QPalette::AlternateBase}},
      {QPalette::PlaceholderText, {QPalette::Window, QPalette::Base, QPalette::AlternateBase}},
      {QPalette::ButtonText, {QPalette::Button}},
      {QPalette::HighlightedText, {QPalette::Highlight}},
      {QPalette::ToolTipText, {QPalette::ToolTipBase}},
      {QPalette::Link, {QPalette::Window, QPalette::Base}},
      {QPalette::BrightText, {QPalette::Base}},
  };
  for (const QPalette& palette : {darkPalette(), lightPalette()}) {
    for (const auto& [text, roles] : grounds) {
      for (const QPalette::ColorRole ground : roles) {
        EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 4.5)
            << (isDark(palette) ? "dark" : "light") << " text role " << text << " on " << ground;
      }
    }
  }
  EXPECT_TRUE(isDark(darkPalette()));
  EXPECT_FALSE(isDark(lightPalette()));
}

}  // namespace
}  // namespace zolt
