// flood: whether a window stays responsive while a program prints as fast as it can. Runs `yes` in a real window for
// five seconds; a heartbeat timer stands in for key presses, which wait for their turn in the same event loop.
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>

#include "Measure.h"
#include "platform/ChildProcess.h"
#include "view/ContentView.h"

namespace {

constexpr int kSeconds = 5;
constexpr int kBeatMs = 5;

// Counts the frames that reach the viewport.
class PaintCounter : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  zolt::ContentView window([](const zolt::TerminalSize& size) {
    return std::make_unique<zolt::TerminalController>(
        zolt::Shell{
            .name = "yes", .executable = "/usr/bin/yes", .args = {"a line of a flood that never ends"}, .icon = ""},
        zolt::TerminalController::Restart::Never, size);
  });
  window.resize(900, 600);
  window.show();
  PaintCounter counter;
  window.textView().viewport()->installEventFilter(&counter);

  QElapsedTimer sinceBeat;
  qint64 longestNs = 0;
  QTimer beat;
  beat.setTimerType(Qt::PreciseTimer);
  QObject::connect(&beat, &QTimer::timeout, [&] {
    if (sinceBeat.isValid()) longestNs = std::max(longestNs, sinceBeat.nsecsElapsed());
    sinceBeat.start();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QApplication::sendEvent(&window.textView(), &key);
  });
  // The first half second is start-up: fonts, the first frame.
  QTimer::singleShot(500, [&] { beat.start(kBeatMs); });
  QTimer::singleShot(500 + kSeconds * 1000, &application, &QApplication::quit);
  QApplication::exec();

  zolt::bench::printRow("flood of `yes`: longest time a key waits for its turn",
                        static_cast<double>(longestNs) / 1e6 - kBeatMs, "ms", 50, true);
  zolt::bench::printRow("flood of `yes`: frames painted", static_cast<double>(counter.paints) / (kSeconds + 0.5),
                        "a second", 20, false);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.0f MB", static_cast<double>(window.textView().textStorage().size()) / 1e6);
  zolt::bench::printFact("  shown in that time", fact);
  return 0;
}
