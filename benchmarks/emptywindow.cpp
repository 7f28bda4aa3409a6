// The smallest program that opens a window: writes the time of its first paint to the pipe ZOLT_BENCH_PIPE and exits.
#include <QApplication>
#include <QWidget>

#include "StartTime.h"

namespace {

class EmptyWindow : public QWidget {
 protected:
  void paintEvent(QPaintEvent*) override {
    zolt::bench::tellTime();
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
  }
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  EmptyWindow window;
  window.resize(900, 600);
  window.show();
  return QApplication::exec();
}
