#include "view/CommandMatch.h"

#include <algorithm>
#include <vector>

namespace zolt {

namespace {

constexpr int kWordStart = 20;
constexpr int kFollows = 10;
constexpr int kElsewhere = 1;
constexpr int kNone = -1;

bool beginsWord(const QString& title, qsizetype at) {
  return title[at].isLetterOrNumber() && (at == 0 || !title[at - 1].isLetterOrNumber());
}

}  // namespace

// For each character typed, the best that can be had with it at each place of the title.
std::optional<int> matchOf(const QString& typed, const QString& title) {
  const QString wanted = typed.simplified().remove(QLatin1Char(' ')).toCaseFolded();
  const QString text = title.toCaseFolded();
  if (text.size() != title.size()) return std::nullopt;  // no title of ours
  if (wanted.isEmpty()) return 0;
  if (text.isEmpty()) return std::nullopt;
  std::vector<int> before(static_cast<std::size_t>(text.size()), kNone);
  std::vector<int> now(before);
  for (qsizetype i = 0; i < wanted.size(); ++i) {
    int best = i == 0 ? 0 : kNone;  // of the characters before, anywhere to the left
    for (qsizetype at = 0; at < text.size(); ++at) {
      const auto place = static_cast<std::size_t>(at);
      now[place] = kNone;
      if (text[at] == wanted[i] && best != kNone) {
        now[place] = best + (beginsWord(title, at) ? kWordStart : kElsewhere);
        const bool mayFollow = i > 0 && at > 0 && before[place - 1] != kNone;
        if (mayFollow) now[place] = std::max(now[place], before[place - 1] + kFollows);
      }
      if (i > 0) best = std::max(best, before[place]);
    }
    before.swap(now);
  }
  const int best = *std::ranges::max_element(before);
  if (best == kNone) return std::nullopt;
  constexpr int kScale = 100;
  return best * kScale - static_cast<int>(std::min<qsizetype>(title.size(), kScale - 1));
}

}  // namespace zolt
