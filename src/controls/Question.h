#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace zolt {

/// What is asked in a box over a window. All texts are plain; "&" in a button's text marks its mnemonic.
struct Question {
  QString name;  ///< of the box, as an object
  QString title;
  QString text;
  QString explanation = {};  ///< in smaller letters below the text
  QString quoted = {};       ///< shown in a fixed-pitch font below both, as it is
  QString yes = {};
  QString no = {};  ///< the desktop's own "Cancel" if empty
};

/// Asks over the window of `over`, and calls `act` if the answer is yes; the other answer is the default. Returns at
/// once; does nothing while the question is open there already. Main thread.
void ask(QWidget& over, const Question& question, std::function<void()> act);

/// Says the same as a warning that can only be acknowledged.
void warn(QWidget& over, const Question& question);

}  // namespace zolt
