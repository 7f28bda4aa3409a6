#include "canvas/TextChange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>

namespace zolt {

static void PrintTo(const TextChange& change, std::ostream* out) {
  *out << "at " << change.at << " -[" << change.removed.toStdString() << "] +[" << change.inserted.toStdString() << "]";
}

namespace {

constexpr std::size_t kNoLimit = 1000;

QStringList rows(const std::string& text) {
  return QString::fromStdString(text).split(QLatin1Char('|'));
}

std::vector<TextChange> changes(const std::string& before, const std::string& after, std::size_t limit = kNoLimit) {
  return textChanges(rows(before), rows(after), limit);
}

TextChange change(int at, const std::string& removed, const std::string& inserted) {
  return {
      .at = at, .removed = rows(removed).join(QLatin1Char('\n')), .inserted = rows(inserted).join(QLatin1Char('\n'))};
}

using Changes = std::vector<TextChange>;

TEST(TextChange, IsNoneBetweenEqualTexts) {
  EXPECT_EQ(changes("one|two", "one|two"), Changes());
  EXPECT_EQ(textChanges({}, {}, 1), Changes());
  EXPECT_EQ(textChanges({}, {QString()}, 1), Changes());
}

TEST(TextChange, OfATextWithoutRowsIsAllOfIt) {
  EXPECT_EQ(textChanges({}, rows("one|two"), 1), Changes({change(0, "", "one|two")}));
  EXPECT_EQ(textChanges(rows("one|two"), {}, 1), Changes({change(0, "one|two", "")}));
}

TEST(TextChange, IsWhatIsTypedOrTakenBackInARow) {
  EXPECT_EQ(changes("$ |", "$ l|"), Changes({change(2, "", "l")}));
  EXPECT_EQ(changes("$ ls|", "$ l|"), Changes({change(3, "s", "")}));
  EXPECT_EQ(changes("top|a 10 b|end", "top|a 25 b|end"), Changes({change(6, "10", "25")}));
  EXPECT_EQ(changes("aa", "aaa"), Changes({change(2, "", "a")}));
}

TEST(TextChange, OfAScrolledTextIsARemovalAtTheTopAndAnInsertionAtTheBottom) {
  EXPECT_EQ(changes("1|2|3|4", "2|3|4|5"), Changes({change(0, "1|", ""), change(5, "", "|5")}));
  EXPECT_EQ(changes("10|11|12", "11|12|13"), Changes({change(0, "10|", ""), change(5, "", "|13")}));
  EXPECT_EQ(changes("a1|a2|a3|a4", "a4|a5|a6|a7"), Changes({change(0, "a1|a2|a3|", ""), change(2, "", "|a5|a6|a7")}));
}

TEST(TextChange, OfATextScrolledBackIsTheOtherWayRound) {
  EXPECT_EQ(changes("2|3|4", "1|2|3"), Changes({change(0, "", "1|"), change(5, "|4", "")}));
}

TEST(TextChange, LeavesARowThatStaysBelowAScrollingOne) {
  EXPECT_EQ(changes("1|2|3|status", "2|3|4|status"), Changes({change(0, "1|", ""), change(4, "", "4|")}));
}

TEST(TextChange, OfOutputOnAnEmptyScreenStaysInItsPlace) {
  EXPECT_EQ(changes("$ ls|||", "$ ls|a  b|$ |"), Changes({change(5, "|", "a  b|$ ")}));
  EXPECT_EQ(changes("$ ls||||bar 1", "$ ls|a  b|$ ||bar 2"),
            Changes({change(5, "|", "a  b|$ "), change(18, "1", "2")}));
}

TEST(TextChange, KeepsTheStartOfARowThatGoesOn) {
  EXPECT_EQ(changes("one|tw", "one|two|three"), Changes({change(6, "", "o|three")}));
  EXPECT_EQ(changes("one|two|three", "one|tw"), Changes({change(6, "o|three", "")}));
}

TEST(TextChange, OfSeveralRowsIsOfWholeRows) {
  EXPECT_EQ(changes("line 10|line 11", "line 97|line 98"), Changes({change(0, "line 10|line 11", "line 97|line 98")}));
}

TEST(TextChange, IsOneForAllWhenThereWouldBeTooMany) {
  EXPECT_EQ(changes("a|=|b|=|c", "A|=|B|=|C", 3).size(), 3U);
  EXPECT_EQ(changes("top|a|=|b|=|c|end", "top|A|=|B|=|C|end", 2), Changes({change(4, "a|=|b|=|c", "A|=|B|=|C")}));
}

TEST(TextChange, NeverSplitsACluster) {
  EXPECT_EQ(changes("e", "e\u0301"), Changes({change(0, "e", "e\u0301")})) << "an accent";
  EXPECT_EQ(changes("x\U0001F600y", "x\U0001F601y"), Changes({change(1, "\U0001F600", "\U0001F601")}))
      << "a surrogate pair";
  EXPECT_EQ(changes("\U0001F469\u200D\U0001F680", "\U0001F468\u200D\U0001F680"),
            Changes({change(0, "\U0001F469\u200D\U0001F680", "\U0001F468\u200D\U0001F680")}))
      << "a joined emoji";
  EXPECT_EQ(changes("\U0001F1E9\U0001F1EA", "\U0001F1EB\U0001F1EA"),
            Changes({change(0, "\U0001F1E9\U0001F1EA", "\U0001F1EB\U0001F1EA")}))
      << "a flag";
}

class RandomRows {
 public:
  explicit RandomRows(unsigned seed) : m_random(seed) {}

  int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(m_random); }
  QString row() {
    static const std::vector<std::string> kPieces{
        "a", "b", " ", "\u6F22", "e\u0301", "\U0001F600", "\U0001F469\u200D\U0001F680"};
    QString row;
    for (int i = below(4); i > 0; --i) {
      row += QString::fromStdString(kPieces[static_cast<std::size_t>(below(static_cast<int>(kPieces.size())))]);
    }
    return row;
  }
  QStringList rows(int most) {
    QStringList rows;
    for (int i = below(most + 1); i > 0; --i) {
      rows += row();
    }
    return rows;
  }
  // Some rows less, some more, some rewritten.
  QStringList changed(QStringList rows) {
    for (int i = below(4); i > 0; --i) {
      const int at = below(static_cast<int>(rows.size()) + 1);
      switch (below(3)) {
        case 0:
          rows.insert(at, row());
          break;
        case 1:
          if (at < rows.size()) rows.removeAt(at);
          break;
        default:
          if (at < rows.size()) rows[at] += row();
      }
    }
    return rows;
  }

 private:
  std::mt19937 m_random;
};

bool splitsAPair(const QString& text) {
  return !text.isEmpty() && (text.front().isLowSurrogate() || text.back().isHighSurrogate());
}

TEST(TextChange, LeadsFromAnyTextToAnyOther) {
  for (unsigned seed = 0; seed < 20'000; ++seed) {
    RandomRows random(seed);
    const QStringList before = random.rows(9);
    const QStringList after = seed % 2 == 0 ? random.changed(before) : random.rows(9);
    const std::size_t limit = seed % 3 == 0 ? 1 : kNoLimit;
    QString text = before.join(QLatin1Char('\n'));
    const Changes found = textChanges(before, after, limit);
    int last = 0;
    for (const TextChange& each : found) {
      SCOPED_TRACE(testing::PrintToString(each));
      ASSERT_FALSE(each.removed.isEmpty() && each.inserted.isEmpty()) << "seed " << seed;
      ASSERT_FALSE(splitsAPair(each.removed) || splitsAPair(each.inserted)) << "seed " << seed;
      ASSERT_GE(each.at, last) << "seed " << seed;
      ASSERT_EQ(text.mid(each.at, each.removed.size()), each.removed) << "seed " << seed;
      text.replace(each.at, each.removed.size(), each.inserted);
      last = each.at;
    }
    ASSERT_EQ(text, after.join(QLatin1Char('\n'))) << "seed " << seed;
    ASSERT_LE(found.size(), limit) << "seed " << seed;
  }
}

TEST(TextChange, TouchesNoRowThatScrollsAlong) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    RandomRows random(seed);
    const int height = 2 + random.below(30);
    const int scrolled = 1 + random.below(height - 1);
    QStringList all;
    for (int i = 0; i < height + scrolled; ++i) {
      all += QStringLiteral("row %1").arg(i);
    }
    const QString removed = all.mid(0, scrolled).join(QLatin1Char('\n')) + QLatin1Char('\n');
    const QString inserted = QLatin1Char('\n') + all.mid(height).join(QLatin1Char('\n'));
    const int kept = static_cast<int>(all.mid(scrolled, height - scrolled).join(QLatin1Char('\n')).size());
    ASSERT_EQ(
        textChanges(all.mid(0, height), all.mid(scrolled), kNoLimit),
        Changes({{.at = 0, .removed = removed, .inserted = {}}, {.at = kept, .removed = {}, .inserted = inserted}}))
        << height << " rows, scrolled by " << scrolled;
  }
}

}  // namespace
}  // namespace zolt
