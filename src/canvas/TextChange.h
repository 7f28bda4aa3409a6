#pragma once

#include <QStringList>
#include <vector>

namespace zolt {

/// Text taken out of and put into a text at one place.
struct TextChange {
  int at = 0;  ///< UTF-16 code units before it, in the text as the changes before this one have left it
  QString removed;
  QString inserted;

  friend bool operator==(const TextChange&, const TextChange&) = default;
};

/// The changes, from the top down, that lead from one text to another; each text is its rows with an LF between two.
///
/// Rows that both have stay, as many as possible, so that a text that scrolls loses rows at one end and gets others at
/// the other. A row that is rewritten in its place changes only where it differs, clusters (UAX #29) as a whole.
/// Several rows next to each other are one change, of whole rows but for the start of a row that is longer or shorter
/// now. If it takes more than `limit` changes (at least 1), there is one instead, from the first row that differs to
/// the last. Pure; takes time in proportion to the product of the numbers of rows that differ.
std::vector<TextChange> textChanges(const QStringList& before, const QStringList& after, std::size_t limit);

}  // namespace zolt
