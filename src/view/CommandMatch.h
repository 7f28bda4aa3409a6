#pragma once

#include <QString>
#include <optional>

namespace zolt {

/// How well what the user has typed stands for a command's title: the higher the better; none if it does not.
///
/// Its characters must all come in the title, in that order, whatever their case; blanks in it only separate. Best are
/// those that begin words ("nt" for "New Tab"), then those that follow each other; of two titles that match alike the
/// shorter one wins. A pure function.
std::optional<int> matchOf(const QString& typed, const QString& title);

}  // namespace zolt
