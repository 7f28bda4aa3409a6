#pragma once

#include <QObject>
#include <QPointF>
#include <functional>
#include <string>
#include <vector>

#include "terminal/EmulationDisplay.h"
#include "terminal/KeyMode.h"
#include "terminal/hints/HintFinder.h"

namespace zolt {

/// Labels on all that can be opened or copied in view, to be typed. While they are shown, the view stays where it is,
/// and the program gets no key. They go as soon as the text under one of them changes. Main thread.
class HintMode : public QObject, public KeyMode {
  Q_OBJECT

 public:
  /// `folder` tells where the program in the terminal is. The display must outlive the mode.
  HintMode(EmulationDisplay& display, std::function<std::string()> folder);
  ~HintMode() override;

  /// Shows the hints, or ends them if they are shown. Where there are none, it beeps.
  void toggle();
  bool isOn() const { return m_isOn; }

  void keyPressed(const QKeyEvent& event, bool repeats) override;
  void interrupted() override { end(); }
  void end() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Hint {
    TextRange range;
    HintKind kind;
    std::string text;  // as it is copied and typed: of a link, its target

    friend bool operator==(const Hint&, const Hint&) = default;
  };

  std::vector<Hint> hintsInView();
  QRectF placeOf(TextRange hint);
  bool isAsShown();
  void showLabels();
  void open(const Hint& hint);

  EmulationDisplay& m_display;
  TextCanvas& m_canvas;
  std::function<std::string()> m_folder;
  bool m_isOn = false;
  std::vector<Hint> m_hints;          // in the order of the canvas's labels
  std::vector<std::string> m_labels;  // of them
  std::vector<QRectF> m_places;       // of their first characters
  std::string m_typed;
};

}  // namespace zolt
