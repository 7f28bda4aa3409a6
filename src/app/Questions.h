#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/Display.h"

namespace zolt {

/// "“vim” is running." for the names of running programs, at least one; an empty name is that of a program that cannot
/// be named.
QString runningSentence(const std::vector<std::string>& programs);

/// Each of these asks over `window` and calls the function if the answer is yes. They return at once, and do nothing
/// while that question is open there already. Main thread.
/// `programs` run in what is about to be closed, and can be brought back for `seconds` seconds; not at all without.
enum class ClosedThing { Pane, Tab, Window };
void askBeforeClosing(QWidget& window, ClosedThing thing, const std::vector<std::string>& programs,
                      std::optional<int> seconds, std::function<void()> close);
void askBeforeQuitting(QWidget& window, const std::vector<std::string>& programs, std::function<void()> quit);
/// Whether a window of another display shall take this one's place.
void askBeforeReplacing(QWidget& window, Display display, std::function<void()> replace);
/// The same where the user has already said so, but a program is running.
void askBeforeEnding(QWidget& window, const std::string& program, std::function<void()> replace);

}  // namespace zolt
