#pragma once

#include <QEvent>
#include <QObject>

namespace zolt::bench {

/// Counts the frames that reach the widget on which it is installed as an event filter.
class PaintCounter : public QObject {
 public:
  int paints = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++paints;
    return QObject::eventFilter(watched, event);
  }
};

}  // namespace zolt::bench
