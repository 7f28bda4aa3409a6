#pragma once

#include <QKeyEvent>

namespace zolt {

/// Has the keyboard instead of the program for a while: hints, or the copy mode. Main thread.
class KeyMode {
 public:
  virtual ~KeyMode() = default;

  /// A key was pressed, or `repeats`; never a modifier on its own.
  virtual void keyPressed(const QKeyEvent& event, bool repeats) = 0;
  /// Something else than keys was entered: a button of the mouse was pressed, text was pasted, dropped or composed.
  /// What was pasted or composed goes nowhere.
  virtual void interrupted() {}
  /// Gives the keyboard back.
  virtual void end() = 0;
};

}  // namespace zolt
