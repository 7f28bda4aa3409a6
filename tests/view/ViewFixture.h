#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include "canvas/CanvasLiterals.h"
#include "support/NumberedLines.h"
#include "support/WaitFor.h"
#include "view/ContentView.h"

namespace zolt::test {

/// The colours of matches: behind all but the current one, and behind that.
inline constexpr QRgb kFound = 0xFFCFB04A;
inline constexpr QRgb kCurrent = 0xFFFF7F24;

/// Makes a controller that runs the test child in a mode, without restarts.
inline ContentView::MakeTerminal runTestChild(std::vector<std::string> mode) {
  return [mode = std::move(mode)](const TerminalSize& size) {
    return std::make_unique<TerminalController>(
        Shell{.name = "Child", .executable = ZOLT_TEST_CHILD, .args = mode, .icon = "terminal"},
        TerminalController::Restart::Never, size);
  };
}

/// A text view as the surface of a terminal that it does not have.
class ViewSurface : public TerminalSurface {
 public:
  explicit ViewSurface(TerminalNSTextView& view) : m_view(view) {
    connect(&view, &TerminalNSTextView::textAppended, this, &TerminalSurface::textChanged);
  }
  TextCanvas& canvas() override { return m_view; }
  const HistoryText& text() const override { return m_view.textStorage(); }
  TextSnapshot excerpt() const override { return m_view.textStorage().snapshot(0, m_view.textStorage().endBlock()); }
  std::unique_ptr<OutputStyles> outputStyles() const override { return nullptr; }
  void whenShown(std::function<void()> shown) override { shown(); }
  void clear() override {}

 private:
  TerminalNSTextView& m_view;
};

/// A text view of its own, shown, without a terminal: what is appended is up to the test.
class TextViewTest : public testing::Test {
 protected:
  void SetUp() override {
    view.resize(900, 600);
    view.show();
    runLoopFor(std::chrono::milliseconds(1));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view, test::kPatience.count()));
  }

  void append(const std::string& text) { view.append(AttributedString(text, TextAttributes{})); }
  void appendLines(std::size_t count) { append(numberedLines(count)); }
  std::string wholeText() const { return view.textStorage().text({}, view.textStorage().end()); }
  /// The middle of the character at `position`, in the viewport; makes the frame first.
  QPoint middleOf(TextPosition position) {
    view.makeFrameNow();
    return view.rectOf(position).center().toPoint();
  }

  TerminalNSTextView view;
};

/// A terminal window whose program is the test child.
class TerminalWindowTest : public testing::Test {
 protected:
  void open(std::vector<std::string> mode) {
    window = std::make_unique<ContentView>(runTestChild(std::move(mode)));
    window->resize(900, 600);
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get(), test::kPatience.count()));
  }

  TerminalNSTextView& view() { return window->textView(); }
  std::string shown() const {
    const TextStorage& storage = window->textView().textStorage();
    return storage.text({}, storage.end());
  }
  bool waitForText(const std::string& text) {
    return waitFor([&] { return shown().find(text) != std::string::npos; });
  }
  /// What the program received and, in the mode "cat", sent back as it was; from now on.
  void recordOutput() {
    window->terminal().ptySession().onOutput = [this](const Bytes& chunk) { recorded += chunk.view(); };
  }

  std::unique_ptr<ContentView> window;
  std::string recorded;
};

}  // namespace zolt::test
