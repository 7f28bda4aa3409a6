#include "updates/Version.h"

#include <QString>
#include <vector>

namespace zolt {

namespace {

// Numbers and the text after them, which is empty at the end of the version.
struct Group {
  std::vector<QStringView> numbers;  // without leading zeros, so 0 is empty; without zeros at the end
  QStringView text;
};

bool isDigit(QChar character) {
  return character >= u'0' && character <= u'9';
}

bool isSeparator(QChar character) {
  return character.isPunct() || character.isSpace();
}

bool isText(QChar character) {
  return !isDigit(character) && !isSeparator(character);
}

// Removes the longest prefix of `rest` whose characters satisfy `belongs`, and returns it.
QStringView takeRun(QStringView& rest, bool (*belongs)(QChar)) {
  qsizetype length = 0;
  while (length < rest.size() && belongs(rest[length])) {
    ++length;
  }
  const QStringView run = rest.first(length);
  rest = rest.sliced(length);
  return run;
}

QStringView withoutLeadingZeros(QStringView number) {
  while (number.startsWith(u'0')) {
    number = number.sliced(1);
  }
  return number;
}

// Removes the numbers up to and including the next text from `rest`.
Group takeGroup(QStringView& rest) {
  Group group;
  while (!rest.isEmpty() && group.text.isEmpty()) {
    takeRun(rest, isSeparator);
    if (const QStringView number = takeRun(rest, isDigit); !number.isEmpty()) {
      group.numbers.push_back(withoutLeadingZeros(number));
    } else {
      group.text = takeRun(rest, isText);
    }
  }
  while (!group.numbers.empty() && group.numbers.back().isEmpty()) {
    group.numbers.pop_back();
  }
  return group;
}

std::weak_ordering compareNumbers(QStringView a, QStringView b) {
  if (a.size() != b.size()) return a.size() <=> b.size();
  return a.compare(b) <=> 0;
}

std::weak_ordering compareGroups(const Group& a, const Group& b) {
  for (std::size_t i = 0; i < a.numbers.size() && i < b.numbers.size(); ++i) {
    if (const auto order = compareNumbers(a.numbers[i], b.numbers[i]); order != 0) return order;
  }
  // There are no zeros at the end, so the longer list has a number other than 0 there.
  if (a.numbers.size() != b.numbers.size()) return a.numbers.size() <=> b.numbers.size();
  if (a.text.isEmpty() != b.text.isEmpty()) return a.text.isEmpty() <=> b.text.isEmpty();
  return a.text.compare(b.text) <=> 0;
}

QStringView comparedPart(QStringView version) {
  const qsizetype dash = version.indexOf(u'-');
  return dash < 0 ? version : version.first(dash);
}

}  // namespace

std::weak_ordering compareVersions(QStringView a, QStringView b) {
  a = comparedPart(a);
  b = comparedPart(b);
  do {
    if (const auto order = compareGroups(takeGroup(a), takeGroup(b)); order != 0) return order;
  } while (!a.isEmpty() || !b.isEmpty());
  return std::weak_ordering::equivalent;
}

}  // namespace zolt
