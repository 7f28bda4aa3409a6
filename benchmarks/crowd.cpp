// crowd: twenty windows in the full emulation in which `yes` runs, and one in which a person types: how long a key
// waits there for its turn in the event loop, and until its echo is in a frame.
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "FullEmulation.h"
#include "Measure.h"

namespace {

constexpr int kFloods = 20;
constexpr int kSeconds = 10;
constexpr int kKeyMs = 100;
constexpr int kStartMs = 2000;

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  zolt::bench::FullEmulation emulation;
  std::vector<std::unique_ptr<zolt::ContentView>> windows;
  const auto open = [&](const char* program, const char* argument) -> zolt::TextCanvas& {
    auto& window = windows.emplace_back(std::make_unique<zolt::ContentView>(
        emulation.areaOf(zolt::bench::terminalWith(program, {argument})), zolt::UserDefaults::standard()));
    window->resize(900, 600);
    window->show();
    return window->surface().canvas();
  };
  for (int i = 0; i < kFloods; ++i) {
    open("/usr/bin/yes", "a line of a flood that never ends");
  }
  zolt::TextCanvas& typedInto = open("/bin/cat", "-");

  std::vector<double> waits;
  std::vector<double> echoes;
  QElapsedTimer sinceKey;
  QElapsedTimer sinceDue;
  bool echoed = true;
  QTimer keys;
  keys.setTimerType(Qt::PreciseTimer);
  QObject::connect(&keys, &QTimer::timeout, [&] {
    if (sinceDue.isValid()) waits.push_back(static_cast<double>(sinceDue.nsecsElapsed()) / 1e6 - kKeyMs);
    sinceDue.start();
    if (!echoed) return;
    echoed = false;
    sinceKey.start();
    QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
    QApplication::sendEvent(&typedInto, &key);
  });
  QObject::connect(&typedInto, &zolt::TextCanvas::frameChanged, [&] {
    if (!echoed) echoes.push_back(static_cast<double>(sinceKey.nsecsElapsed()) / 1e6);
    echoed = true;
  });
  QTimer::singleShot(kStartMs, [&] { keys.start(kKeyMs); });
  QTimer::singleShot(kStartMs + kSeconds * 1000, &application, &QApplication::quit);
  QApplication::exec();
  if (waits.empty() || echoes.empty()) {
    std::fprintf(stderr, "crowd: no key was echoed\n");
    return 1;
  }

  zolt::bench::printRow("full emulation, 20 floods: longest a key waits in a 21st", *std::ranges::max_element(waits),
                        "ms", 100, true);
  char fact[64];
  std::snprintf(fact, sizeof fact, "%.1f ms, longest %.1f ms", zolt::bench::median(echoes),
                *std::ranges::max_element(echoes));
  zolt::bench::printFact("  until its echo is in a frame", fact);
}
