#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "canvas/TextCanvas.h"
#include "history/HistoryText.h"
#include "history/OutputWriter.h"
#include "history/TextSnapshot.h"

namespace zolt {

/// What windows, find, saving and the command line know of a display. Main thread.
class TerminalSurface : public QObject {
  Q_OBJECT

 public:
  /// Shows the text and takes the keyboard. A child of the widget that the surface was made in.
  virtual TextCanvas& canvas() = 0;

  /// The text that is shown, as find searches it; its positions are those of the canvas. Kept up to date only while it
  /// is followed.
  virtual const HistoryText& text() const = 0;
  virtual void followText(bool /*followed*/) {}
  /// All of the text that is kept, as it is now, for saving, and how its styles are written.
  virtual TextSnapshot excerpt() const = 0;
  virtual std::unique_ptr<OutputStyles> outputStyles() const = 0;

  /// Calls `shown` once everything is on display that has been read from the program so far.
  virtual void whenShown(std::function<void()> shown) = 0;
  /// Whether a match that is found is a place to go to just now. Then it is not selected when the find bar is closed,
  /// and Return in the bar gives the keyboard back to the text.
  virtual bool takesMatches() const { return false; }
  virtual void takeMatch(TextRange /*match*/) {}
  /// Empties the terminal, as the user's command.
  virtual void clear() = 0;

 Q_SIGNALS:
  /// `text()` has changed. Places that were held have moved as the canvas's source tells.
  void textChanged();
  /// The user asks from within the text to find something; the next or the previous match.
  void findWanted();
  void findNextWanted();
  void findPreviousWanted();
  /// `text()` is another one now, with places of its own.
  void textReplaced();
};

}  // namespace zolt
