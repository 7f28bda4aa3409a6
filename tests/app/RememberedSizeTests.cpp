#include "app/RememberedSize.h"

#include <chrono>
#include <filesystem>
#include <fstream>

#include "AppFixture.h"
#include "platform/CacheFolder.h"

namespace zolt {
namespace {

constexpr TerminalSize kSize{.rows = 31, .columns = 97, .pixelWidth = 890, .pixelHeight = 560};

class RememberedSizeTest : public testing::Test {
 protected:
  void write(const std::string& content) const { std::ofstream(path) << content; }

  QTemporaryDir temporary;
  std::string folder = temporary.filePath(QStringLiteral("caches/zolt")).toStdString();
  std::string path = folder + "/terminal-size";
  RememberedSize remembered{folder};
};

TEST_F(RememberedSizeTest, IsNoneBeforeTheFirstStart) {
  EXPECT_EQ(remembered.find("900 600"), std::nullopt);
}

TEST_F(RememberedSizeTest, IsFoundByTheNextStart) {
  remembered.set("900 600", kSize);
  EXPECT_EQ(RememberedSize(folder).find("900 600"), kSize);
}

TEST_F(RememberedSizeTest, HoldsOnlyForWhatItWasComputedFrom) {
  remembered.set("900 600", kSize);
  EXPECT_EQ(remembered.find("900 600 2"), std::nullopt);
  EXPECT_EQ(remembered.find("900"), std::nullopt);
}

TEST_F(RememberedSizeTest, IsReplacedByALaterOne) {
  remembered.set("900 600", kSize);
  remembered.set("800 600", {.rows = 30, .columns = 80, .pixelWidth = 800, .pixelHeight = 540});
  EXPECT_EQ(remembered.find("900 600"), std::nullopt);
  EXPECT_EQ(remembered.find("800 600")->columns, 80);
}

TEST_F(RememberedSizeTest, IsNoneInADamagedFile) {
  remembered.set("900 600", kSize);
  for (const char* content : {"", "900 600", "900 600\n", "900 600\n31\n97\n890\n", "900 600\n31\nx\n890\n560\n",
                              "900 600\n0\n97\n890\n560\n", "900 600\n-3\n97\n890\n560\n",
                              "900 600\n31\n97\n890\n65536\n", "900 600\n99999999999999999999\n97\n890\n560\n"}) {
    write(content);
    EXPECT_EQ(remembered.find("900 600"), std::nullopt) << content;
  }
}

TEST_F(RememberedSizeTest, IsNotWrittenAgainIfItIsTheSame) {
  remembered.set("900 600", kSize);
  const auto written = std::filesystem::last_write_time(path) - std::chrono::hours(1);
  std::filesystem::last_write_time(path, written);
  remembered.set("900 600", kSize);
  EXPECT_EQ(std::filesystem::last_write_time(path), written);
}

TEST_F(RememberedSizeTest, IsForgottenWhereNothingCanBeWritten) {
  RememberedSize nowhere("");
  nowhere.set("900 600", kSize);
  EXPECT_EQ(nowhere.find("900 600"), std::nullopt);
}

/// The first window of a start, in each display.
class FirstWindowTest : public test::AppDelegateTest, public testing::WithParamInterface<Display> {
 protected:
  FirstWindowTest() { launch.display = GetParam(); }
  ~FirstWindowTest() override { std::filesystem::remove(cacheFolder() + "/terminal-size"); }

  static std::string numbers(const TerminalSize& size) {
    std::string text = std::to_string(size.rows);
    text += 'x';
    return text += std::to_string(size.columns);
  }
  /// What the program has been told, one size after another.
  static std::string told(TerminalWindow& window) {
    TextCanvas& canvas = window.contentViewController().rootView().surface().canvas();
    canvas.makeFrameNow();
    return canvas.visibleText().toStdString();
  }

  const CanvasFont font = GetParam() == Display::FullEmulation ? emulationFont(EmulationSettings()) : CanvasFont();
  const std::string basis = whatTerminalSizeDependsOn(font, nullptr, std::nullopt);
  const RememberedSize memory{cacheFolder()};
  TerminalLaunch launch = child({"size"});
};

TEST_P(FirstWindowTest, RemembersItsSize) {
  delegate.openWindow(launch);
  EXPECT_EQ(memory.find(basis), terminalSizeOfNewWindow(font));
}

TEST_P(FirstWindowTest, StartsItsShellWithTheRememberedSizeAndCorrectsIt) {
  memory.set(basis, kSize);
  TerminalWindow& window = delegate.openWindow(launch);
  const std::string right = numbers(window.contentViewController().rootView().surface().canvas().gridSize());
  EXPECT_TRUE(test::waitFor([&] { return told(window).find(right) != std::string::npos; })) << told(window);
  EXPECT_TRUE(told(window).starts_with(numbers(kSize))) << told(window);
  EXPECT_EQ(memory.find(basis), terminalSizeOfNewWindow(font));
}

TEST_P(FirstWindowTest, RemembersItsSizeApartWithABarBelowTheTerminal) {
  if (GetParam() != Display::Log) GTEST_SKIP() << "the bar is below the log";
  launch.display.reset();
  delegate.applicationDidFinishLaunching(launch);
  EXPECT_EQ(memory.find(basis), std::nullopt);
  TerminalWindow& window = *delegate.windows().front();
  const auto* bar = window.findChild<DisplayBar*>();
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(memory.find(whatTerminalSizeDependsOn(font, bar, std::nullopt)), terminalSizeOfNewWindow(font, bar));
}

TEST_P(FirstWindowTest, GivesAProgramOfTheCommandLineTheRightSizeAtOnce) {
  memory.set(basis, kSize);
  launch.isForProgram = true;
  TerminalWindow& window = delegate.openWindow(launch);
  const std::string right = numbers(terminalSizeOfNewWindow(font));
  EXPECT_TRUE(test::waitFor([&] { return told(window).starts_with(right); })) << told(window);
}

TEST_P(FirstWindowTest, IsTheOnlyOneOfAStartWithARememberedSize) {
  delegate.openWindow(launch);
  memory.set(basis, kSize);
  TerminalWindow& second = delegate.openWindow(launch);
  const std::string right = numbers(terminalSizeOfNewWindow(font));
  EXPECT_TRUE(test::waitFor([&] { return told(second).starts_with(right); })) << told(second);
}

INSTANTIATE_TEST_SUITE_P(OfBothDisplays, FirstWindowTest, testing::Values(Display::Log, Display::FullEmulation));

}  // namespace
}  // namespace zolt
