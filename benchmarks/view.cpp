// view: the log view in a window over a hundred million lines: jumps and resizes, with what they paint.
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "Measure.h"
#include "Samples.h"
#include "text/AttributedString.h"
#include "view/TerminalNSTextView.h"

namespace {

constexpr std::uint64_t kLines = 100'000'000;
constexpr std::size_t kSampleBytes = 64 << 20;
constexpr int kJumps = 500;
constexpr int kResizes = 60;

double worst(const std::vector<double>& seconds) {
  return 1000 * *std::ranges::max_element(seconds);
}

double middle(const std::vector<double>& seconds) {
  return 1000 * zolt::bench::median(seconds);
}

void tell(const char* what, const std::vector<double>& seconds) {
  zolt::bench::printRow(what, worst(seconds), "ms", 16, true);
  char value[32];
  std::snprintf(value, sizeof value, "%10.2f ms", middle(seconds));
  zolt::bench::printFact("  in the middle", value);
}

// Paints what is due now, and not at the next refresh.
void paint(zolt::TerminalNSTextView& view) {
  view.makeFrameNow();
  view.viewport()->repaint();
}

// 120 by 40 cells, each with a character, a colour and a background of its own: the picture of a full-screen program.
void measureColouredFrame() {
  constexpr int kFrames = 60;
  zolt::TerminalNSTextView view;
  view.resize(1400, 900);
  view.show();
  QApplication::processEvents();
  std::mt19937 random(5);
  const auto color = [&] {
    const auto component = [&] { return static_cast<double>(random() % 256) / 255.0; };
    return zolt::Color{component(), component(), component(), 1.0};
  };
  for (int row = 0; row < 40; ++row) {
    for (int column = 0; column < 120; ++column) {
      zolt::TextAttributes attributes;
      attributes.foreground = color();
      attributes.background = color();
      view.append(zolt::AttributedString(std::string(1, static_cast<char>('!' + random() % 94)), attributes));
    }
    view.append(zolt::AttributedString("\n", zolt::TextAttributes{}));
  }
  paint(view);
  QImage picture(view.viewport()->size(), QImage::Format_RGB32);
  QImage copy(picture.size(), QImage::Format_RGB32);
  std::vector<double> ratios;
  for (int i = 0; i < kFrames; ++i) {
    const double painted = zolt::bench::secondsFor([&] { view.viewport()->render(&picture); });
    const double copied = zolt::bench::secondsFor([&] { QPainter(&copy).drawImage(0, 0, picture); });
    ratios.push_back(painted / copied);
  }
  zolt::bench::printRow("a frame of 120 by 40 cells with own colours / a copy of it", zolt::bench::median(ratios),
                        "times", 3, true);
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  measureColouredFrame();
  zolt::TerminalNSTextView view;
  view.resize(900, 600);
  view.show();
  QApplication::processEvents();

  const zolt::AttributedString sample(zolt::bench::plainLog(kSampleBytes), zolt::TextAttributes{});
  while (view.textStorage().lineCount() <= kLines) {
    view.append(sample);
  }
  paint(view);

  std::mt19937_64 random(11);
  std::vector<double> jumps;
  for (int i = 0; i < kJumps; ++i) {
    const zolt::DevicePixels offset(random() % static_cast<std::uint64_t>(view.scrollMaximum().value));
    jumps.push_back(zolt::bench::secondsFor([&] {
      view.scrollTo(offset);
      paint(view);
    }));
  }
  tell("view, 100 million lines: slowest of 500 jumps, painted", jumps);

  std::vector<double> resizes;
  for (int i = 0; i < kResizes; ++i) {
    const int width = 300 + static_cast<int>(random() % 1200);
    resizes.push_back(zolt::bench::secondsFor([&] {
      view.resize(width, 600);
      paint(view);
    }));
    // Work that the resize left for the event loop is not counted.
    QApplication::processEvents();
  }
  tell("view, 100 million lines: slowest of 60 resizes, painted", resizes);
}
