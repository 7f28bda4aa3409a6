// A frame with more new clusters than there is time for.
#include <gtest/gtest.h>

#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <memory>
#include <string>

#include "canvas/CanvasLiterals.h"
#include "canvas/TextCanvas.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

constexpr int kClusters = 40;

// Time passes only when somebody asks for it: much too much for a frame, each time.
class HastyClock : public Clock {
 public:
  TimePoint now() const override { return m_now += std::chrono::seconds(1); }
  std::unique_ptr<Timer> makeTimer(std::function<void()> elapsed) override {
    return steady().makeTimer(std::move(elapsed));
  }

 private:
  mutable TimePoint m_now{};
};

// A row of accented letters, each another.
class OneRow : public RowSource {
 public:
  OneRow() {
    m_row = std::make_shared<RowContent>();
    for (int i = 0; i < kClusters; ++i) {
      const std::string letter{'\xC4', static_cast<char>(0x80 + i)};
      m_row->addCluster({.begin = m_row->end, .end = m_row->end + 1}, letter, {});
      m_row->end = m_row->end + 1;
    }
    m_row->range = {.begin = {}, .end = end()};
  }
  void sync() override {}
  int columns() const override { return 80; }
  void setColumns(int) override {}
  std::int64_t rowCount() const override { return 1; }
  std::uint64_t generation() const override { return 0; }
  bool refine() override { return false; }
  std::shared_ptr<const RowContent> content(CanvasRow) override { return m_row; }
  TextRange rowRange(CanvasRow) override { return m_row->range; }
  CanvasRow rowAt(TextPosition) override { return {}; }
  CanvasRow roughRowAt(TextPosition) const override { return {}; }
  TextPosition end() const override { return TextPosition() + std::uint64_t{kClusters}; }
  std::string text(TextRange) const override { return {}; }
  TextRange wordAt(TextPosition) const override { return {}; }
  TextRange lineAt(TextPosition) const override { return {}; }
  TextPosition characterBefore(TextPosition position) const override { return position; }

 private:
  std::shared_ptr<RowContent> m_row;
};

class PaintCounter : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

class UnfinishedFrameTest : public testing::Test {
 protected:
  void SetUp() override {
    canvas.viewport()->installEventFilter(&counter);
    canvas.resize(800, 100);
    canvas.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&canvas, test::kPatience.count()));
  }
  QImage picture() { return canvas.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
  QImage onScreen() {
    const QPixmap screen = canvas.screen()->grabWindow(canvas.winId());
    return screen.toImage().copy(canvas.viewport()->geometry()).convertToFormat(QImage::Format_RGB32);
  }

  HastyClock clock;
  PaintCounter counter;
  TextCanvas canvas{std::make_unique<OneRow>(), nullptr, clock};
};

TEST_F(UnfinishedFrameTest, IsFinishedByTheNextFrames) {
  ASSERT_TRUE(test::waitFor([&] { return counter.paints >= kClusters; })) << "each has time for one cluster";
  const QImage complete = picture();
  EXPECT_TRUE(test::waitFor([&] { return onScreen() == complete; }));
  const int before = counter.paints;
  test::runLoopFor(std::chrono::milliseconds(100));
  EXPECT_LE(counter.paints, before + 2) << "then nothing is left to paint";
}

TEST_F(UnfinishedFrameTest, IsCompleteInAPictureOfIt) {
  TextCanvas other(std::make_unique<OneRow>());
  other.resize(canvas.size());
  EXPECT_EQ(picture(), other.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32));
}

}  // namespace
}  // namespace zolt
