// frames: what a frame of the full emulation costs: with colours of their own in every cell, after one line has
// scrolled, and after a resize with 100,000 lines of history.
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "FullEmulation.h"
#include "Measure.h"
#include "PaintCounter.h"
#include "Samples.h"

namespace {

using zolt::bench::median;
using zolt::bench::printFact;
using zolt::bench::printRow;

constexpr int kRows = 40;
constexpr int kColumns = 120;
constexpr int kFrames = 60;
constexpr int kResizes = 60;
constexpr auto kPause = std::chrono::milliseconds(100);
constexpr int kLines = 100'000;
constexpr const char* kCell = "\033[38;2;%d;%d;%d;48;2;%d;%d;%dm%c";

void fact(const char* what, const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  printFact(what, text);
}

// A window in the full emulation, whose program prints nothing: what it shows is fed to the engine.
class Window {
 public:
  Window()
      : m_content(m_emulation.areaOf(zolt::bench::terminalWith("/bin/sleep", {"1000"})),
                  zolt::UserDefaults::standard()) {
    m_content.resize(1400, 900);
    m_content.show();
    canvas().viewport()->installEventFilter(&m_counter);
    waitUntilShown();
  }

  zolt::TextCanvas& canvas() { return m_content.surface().canvas(); }
  zolt::EmulationDisplay& display() { return static_cast<zolt::EmulationSurface&>(m_content.surface()).display(); }
  void resize(int width, int height) { m_content.resize(width, height); }

  void feed(std::string text) { display().emulator().feed(zolt::Bytes(std::move(text))); }
  void setSize(int rows, int columns) {
    display().emulator().change([=](zolt::vt::Terminal& engine) { engine.resize({.rows = rows, .columns = columns}); });
  }

  // Runs the event loop until everything fed is on display.
  void waitUntilShown() {
    bool shown = false;
    m_content.surface().whenShown([&] { shown = true; });
    while (!shown) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QApplication::processEvents();
  }

  // Waits for the engine without running the event loop.
  void waitForSnapshot() {
    const auto* before = display().source().screen().get();
    while (display().source().screen().get() == before) {
      display().source().sync();
    }
  }

  // Runs the event loop until there has been a paint after which `done` holds.
  void paintUntil(const std::function<bool()>& done) {
    for (int before = m_counter.paints; m_counter.paints == before || !done();) {
      QApplication::processEvents();
    }
  }

 private:
  zolt::bench::FullEmulation m_emulation;
  zolt::ContentView m_content;
  zolt::bench::PaintCounter m_counter;
};

std::string colouredRow(std::mt19937& random) {
  const auto component = [&] { return static_cast<int>(random() % 256); };
  std::string row;
  for (int column = 0; column < kColumns; ++column) {
    char cell[64];
    std::snprintf(cell, sizeof cell, kCell, component(), component(), component(), component(), component(),
                  component(), static_cast<char>('!' + random() % 94));
    row += cell;
  }
  return row;
}

void measureFrames() {
  Window window;
  window.setSize(kRows, kColumns);
  std::mt19937 random(5);
  std::string picture;
  for (int row = 0; row < kRows; ++row) {
    picture += (row == 0 ? "\033[H" : "\r\n") + colouredRow(random);
  }
  window.feed(picture);
  window.waitUntilShown();

  QWidget& viewport = *window.canvas().viewport();
  QImage image(viewport.size(), QImage::Format_RGB32);
  QImage copy(image.size(), QImage::Format_RGB32);
  std::vector<double> ratios;
  std::vector<double> full;
  std::vector<double> scrolled;
  for (int i = 0; i < kFrames; ++i) {
    const double painted = zolt::bench::secondsFor([&] { viewport.render(&image); });
    const double copied = zolt::bench::secondsFor([&] { QPainter(&copy).drawImage(0, 0, image); });
    ratios.push_back(painted / copied);
    full.push_back(zolt::bench::secondsFor([&] {
      viewport.update();
      window.paintUntil([] { return true; });
    }));
    window.feed("\r\n" + colouredRow(random));
    window.waitForSnapshot();
    scrolled.push_back(zolt::bench::secondsFor([&] {
      window.canvas().makeFrameNow();
      window.paintUntil([] { return true; });
    }));
    window.waitUntilShown();
  }
  printRow("full emulation, 120 by 40 cells with own colours / a copy", median(ratios), "times", 3, true);
  fact("  the frame in a window", "%.2f ms", 1e3 * median(full));
  printRow("full emulation, a frame after one line scrolled / all of it", median(scrolled) / median(full), "times",
           0.25, true);
}

void measureResizes() {
  Window window;
  std::string lines = zolt::bench::plainLog(static_cast<std::size_t>(kLines) * 100);
  window.feed(zolt::bench::withTerminalLineEnds(lines));
  window.waitUntilShown();
  std::mt19937 random(11);
  std::vector<double> resizes;
  for (int i = 0; i < kResizes; ++i) {
    const int before = window.display().source().columns();
    // Never the same number of columns.
    const int width = (i % 2 == 0 ? 300 : 1000) + static_cast<int>(random() % 400);
    resizes.push_back(1e3 * zolt::bench::secondsFor([&] {
                        window.resize(width, 600);
                        window.paintUntil([&] {
                          const int columns = window.display().source().columns();
                          return columns != before && columns == window.canvas().gridSize().columns;
                        });
                      }));
    window.waitUntilShown();
    // So that no resize counts as part of a flood of frames.
    std::this_thread::sleep_for(kPause);
  }
  printRow("full emulation, 100,000 lines: slowest of 60 resizes, painted", *std::ranges::max_element(resizes), "ms",
           16, true);
  fact("  in the middle", "%.2f ms", median(resizes));
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  measureFrames();
  measureResizes();
}
