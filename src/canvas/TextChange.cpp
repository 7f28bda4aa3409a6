#include "canvas/TextChange.h"

#include <algorithm>
#include <string>
#include <utility>

#include "text/GraphemeClusters.h"

namespace zolt {

namespace {

// Rows [begin, end) of a text.
struct Rows {
  qsizetype begin = 0;
  qsizetype end = 0;

  qsizetype count() const { return end - begin; }
};

// Rows of the text before, and what stands in their place after: one or both are not empty.
struct Gap {
  Rows before;
  Rows after;
};

// Where clusters begin in `text`, and its end, in UTF-16 code units.
std::vector<qsizetype> clusterBounds(const QString& text) {
  const std::string utf8 = text.toStdString();
  std::vector<qsizetype> bounds{0};
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t end = clusterEnd(utf8, at);
    const qsizetype units = QString::fromUtf8(utf8.data() + at, static_cast<qsizetype>(end - at)).size();
    bounds.push_back(bounds.back() + units);
    at = end;
  }
  return bounds;
}

// How many code units the clusters have that both texts begin with.
qsizetype commonStart(const QString& one, const QString& other) {
  const auto difference = std::ranges::mismatch(one, other).in1 - one.begin();
  const std::vector<qsizetype> bounds = clusterBounds(one);
  const std::vector<qsizetype> otherBounds = clusterBounds(other);
  std::vector<qsizetype> shared;
  std::ranges::set_intersection(bounds, otherBounds, std::back_inserter(shared));
  return *(std::ranges::upper_bound(shared, difference) - 1);
}

// The same for their ends, at most `most`.
qsizetype commonEnd(const QString& one, const QString& other, qsizetype most) {
  std::vector<qsizetype> shared;
  const auto fromEnd = [](const QString& text) {
    std::vector<qsizetype> bounds = clusterBounds(text);
    std::ranges::transform(bounds, bounds.begin(), [&](qsizetype bound) { return text.size() - bound; });
    std::ranges::reverse(bounds);
    return bounds;
  };
  std::ranges::set_intersection(fromEnd(one), fromEnd(other), std::back_inserter(shared));
  const auto difference = std::mismatch(one.rbegin(), one.rend(), other.rbegin(), other.rend()).first - one.rbegin();
  return *(std::ranges::upper_bound(shared, std::min<qsizetype>(difference, most)) - 1);
}

// The rows between those that stay. Of all ways to keep the most rows, one that rewrites the most in their places.
std::vector<Gap> gapsBetween(const QStringList& before, const QStringList& after, const Gap& all) {
  const qsizetype width = all.after.count() + 1;
  const auto unkept =
      static_cast<int>(all.before.count() + all.after.count() + 1);  // what a row costs that is not kept
  const int rewritten = 2 * unkept - 1;
  // The least cost for the rest of both texts, from each pair of rows on.
  std::vector<int> costs(static_cast<std::size_t>((all.before.count() + 1) * width));
  const auto cost = [&](qsizetype i, qsizetype j) -> int& { return costs[static_cast<std::size_t>(i * width + j)]; };
  const auto isKept = [&](qsizetype i, qsizetype j) {
    return before[all.before.begin + i] == after[all.after.begin + j];
  };
  for (qsizetype i = all.before.count(); i >= 0; --i) {
    for (qsizetype j = all.after.count(); j >= 0; --j) {
      const qsizetype restBefore = all.before.count() - i;
      const qsizetype restAfter = all.after.count() - j;
      if (restBefore == 0 || restAfter == 0) {
        cost(i, j) = static_cast<int>(restBefore + restAfter) * unkept;
      } else {
        cost(i, j) = std::min(
            {cost(i + 1, j + 1) + (isKept(i, j) ? 0 : rewritten), cost(i + 1, j) + unkept, cost(i, j + 1) + unkept});
      }
    }
  }
  std::vector<Gap> gaps;
  Gap gap{.before = {.begin = all.before.begin, .end = all.before.begin},
          .after = {.begin = all.after.begin, .end = all.after.begin}};
  const auto close = [&] {
    if (gap.before.count() + gap.after.count() > 0) gaps.push_back(gap);
  };
  while (gap.before.end < all.before.end || gap.after.end < all.after.end) {
    const qsizetype i = gap.before.end - all.before.begin;
    const qsizetype j = gap.after.end - all.after.begin;
    const bool canPair = i < all.before.count() && j < all.after.count();
    if (canPair && isKept(i, j) && cost(i, j) == cost(i + 1, j + 1)) {
      close();
      gap.before = {.begin = gap.before.end + 1, .end = gap.before.end + 1};
      gap.after = {.begin = gap.after.end + 1, .end = gap.after.end + 1};
    } else if (canPair && cost(i, j) == cost(i + 1, j + 1) + rewritten) {
      ++gap.before.end;
      ++gap.after.end;
    } else if (i < all.before.count() && cost(i, j) == cost(i + 1, j) + unkept) {
      ++gap.before.end;
    } else {
      ++gap.after.end;
    }
  }
  close();
  return gaps;
}

QString joined(const QStringList& rows, Rows part) {
  return rows.mid(part.begin, part.count()).join(QLatin1Char('\n'));
}

// `at`: where the rows of the gap begin; `isLast`: no row follows it.
TextChange changeOf(const QStringList& before, const QStringList& after, const Gap& gap, int at, bool isLast) {
  TextChange change{.at = at, .removed = joined(before, gap.before), .inserted = joined(after, gap.after)};
  if (gap.before.count() == 0 || gap.after.count() == 0) {
    // The line end that comes or goes with the rows is the one after them, or before them at the end of the text.
    QString& text = gap.before.count() == 0 ? change.inserted : change.removed;
    if (isLast) {
      text.prepend(QLatin1Char('\n'));
      --change.at;
    } else {
      text.append(QLatin1Char('\n'));
    }
    return change;
  }
  const QString& firstBefore = before[gap.before.begin];
  const QString& firstAfter = after[gap.after.begin];
  const bool isOneRow = gap.before.count() == 1 && gap.after.count() == 1;
  const qsizetype start = commonStart(firstBefore, firstAfter);
  if (isOneRow || start == firstBefore.size() || start == firstAfter.size()) {
    change.at += static_cast<int>(start);
    change.removed.remove(0, start);
    change.inserted.remove(0, start);
  }
  if (isOneRow) {
    const qsizetype end = commonEnd(firstBefore, firstAfter, std::min(change.removed.size(), change.inserted.size()));
    change.removed.chop(end);
    change.inserted.chop(end);
  }
  return change;
}

}  // namespace

std::vector<TextChange> textChanges(const QStringList& before, const QStringList& after, std::size_t limit) {
  // Without rows a text is as empty as with one that is empty.
  if (before.isEmpty()) return textChanges({QString()}, after, limit);
  if (after.isEmpty()) return textChanges(before, {QString()}, limit);
  const auto start = std::ranges::mismatch(before, after).in1 - before.begin();
  if (start == before.size() && start == after.size()) return {};
  const auto most = std::min(before.size(), after.size()) - start;
  const auto same = std::mismatch(before.rbegin(), before.rend(), after.rbegin(), after.rend()).first - before.rbegin();
  const qsizetype end = std::min<qsizetype>(same, most);
  const Gap all{.before = {.begin = start, .end = before.size() - end},
                .after = {.begin = start, .end = after.size() - end}};
  std::vector<Gap> gaps = gapsBetween(before, after, all);
  if (gaps.size() > limit) gaps = {all};

  std::vector<TextChange> changes;
  qsizetype counted = 0;
  int at = 0;  // where row `counted` of the text after begins
  for (const Gap& gap : gaps) {
    for (; counted < gap.after.begin; ++counted) {
      at += static_cast<int>(after[counted].size()) + 1;
    }
    changes.push_back(changeOf(before, after, gap, at, gap.before.end == before.size()));
  }
  return changes;
}

}  // namespace zolt
