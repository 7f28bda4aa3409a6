#pragma once

#include <QKeyEvent>
#include <QString>

namespace zolt {

/// Takes what the user enters into a canvas. Called on the main thread.
class CanvasInput {
 public:
  virtual ~CanvasInput() = default;

  /// A key was pressed or repeats. Shortcuts of the window and keys that compose text do not get here.
  virtual void keyPressed(const QKeyEvent& event) = 0;
  /// An input method committed text; never empty.
  virtual void textCommitted(const QString& text) = 0;
  /// Text was pasted; never empty.
  virtual void textPasted(const QString& text) = 0;
};

}  // namespace zolt
