#pragma once

#include <QLabel>
#include <QWidget>

#include "terminal/copying/CopyMode.h"

namespace zolt {

/// Says in a corner of a terminal that its copy mode is on, what it selects, and how it is left. Lies over the text, so
/// that the terminal keeps its size, and gives way to the cursor. Main thread.
class CopyModeBar : public QWidget {
  Q_OBJECT

 public:
  /// A child of the canvas's parent, hidden until the mode is on. Both must outlive the bar.
  CopyModeBar(CopyMode& mode, TextCanvas& canvas);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void showState();
  void place();

  CopyMode& m_mode;
  TextCanvas& m_canvas;
  QLabel* m_text;  // a child
};

}  // namespace zolt
