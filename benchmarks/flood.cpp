// flood log|emulation: whether a window stays responsive while a program prints as fast as it can. Runs `yes` in a real
// window for five seconds; a heartbeat timer stands in for key presses, which wait for their turn in the same event
// loop.
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>

#include "FullEmulation.h"
#include "Measure.h"
#include "PaintCounter.h"

namespace {

constexpr int kSeconds = 5;
constexpr int kBeatMs = 5;

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 2) return 2;
  const bool isFull = std::string(argv[1]) == "emulation";
  zolt::bench::FullEmulation emulation;
  const auto yes = zolt::bench::terminalWith("/usr/bin/yes", {"a line of a flood that never ends"});
  const auto shown = isFull ? std::make_unique<zolt::ContentView>(emulation.areaOf(yes), zolt::UserDefaults::standard())
                            : std::make_unique<zolt::ContentView>(yes, zolt::UserDefaults::standard());
  zolt::ContentView& window = *shown;
  window.resize(900, 600);
  window.show();
  zolt::TextCanvas& canvas = window.surface().canvas();
  zolt::bench::PaintCounter counter;
  canvas.viewport()->installEventFilter(&counter);

  QElapsedTimer sinceBeat;
  qint64 longestNs = 0;
  QTimer beat;
  beat.setTimerType(Qt::PreciseTimer);
  QObject::connect(&beat, &QTimer::timeout, [&] {
    if (sinceBeat.isValid()) longestNs = std::max(longestNs, sinceBeat.nsecsElapsed());
    sinceBeat.start();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QApplication::sendEvent(&canvas, &key);
  });
  // The first half second is start-up: fonts, the first frame.
  QTimer::singleShot(500, [&] { beat.start(kBeatMs); });
  QTimer::singleShot(500 + kSeconds * 1000, &application, &QApplication::quit);
  QApplication::exec();

  const std::string what = isFull ? "full emulation, flood of `yes`" : "flood of `yes`";
  zolt::bench::printRow(what + ": longest time a key waits for its turn",
                        static_cast<double>(longestNs) / 1e6 - kBeatMs, "ms", 50, true);
  zolt::bench::printRow(what + ": frames painted", static_cast<double>(counter.paints) / (kSeconds + 0.5), "a second",
                        20, false);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.0f MB", static_cast<double>(canvas.source().end().value) / 1e6);
  zolt::bench::printFact("  shown in that time", fact);
  return 0;
}
