#include "terminal/copying/CopyMotions.h"

#include <QChar>
#include <algorithm>
#include <string>

#include "text/Utf8.h"
#include "vt/history/TextUnits.h"

namespace zolt {

namespace {

// Of the text before a place, to find where its last character begins; more than one is ever likely to have.
constexpr std::uint64_t kLookBack = 128;
constexpr std::uint64_t kLongestCharacter = 128;
// A line that begins with so many blanks is blank.
constexpr std::uint64_t kBlanksOfALine = 4096;

enum class Class : std::uint8_t { Blank, Word, Symbol };

// A cursor that goes through a text character by character.
class Walker {
 public:
  Walker(const HistoryText& text, TextPosition at) : m_text(text), m_at(at) {}

  TextPosition at() const { return m_at; }
  bool isAtStart() const { return m_at <= m_text.begin(); }
  bool isAtEnd() const { return m_at >= m_text.end(); }
  bool isOnLineEnd() const { return isAtEnd() || m_text.at(m_at) == '\n'; }
  bool isOnEmptyLine() const { return isOnLineEnd() && (isAtStart() || m_text.at(m_at - 1) == '\n'); }

  TextPosition next() const {
    if (isAtEnd()) return m_at;
    if (isOnLineEnd()) return m_at + 1;
    std::string part = m_text.text(m_at, std::min(m_at + kLongestCharacter, m_text.end()));
    part.resize(std::min(part.find('\n'), part.size()));
    return m_at + vt::unitAt(part, 0, hasClusters()).size;
  }

  TextPosition previous() const {
    if (isAtStart()) return m_at;
    if (static_cast<unsigned char>(m_text.at(m_at - 1)) < 0x80) return m_at - 1;
    const TextPosition first = std::max(m_text.begin(), m_at.backBy(kLookBack));
    const std::string part = m_text.text(first, m_at);
    std::size_t begin = part.rfind('\n') + 1;  // 0 if there is none
    while (begin < part.size() && isUtf8Continuation(part[begin])) {
      ++begin;
    }
    while (begin < part.size()) {
      const std::size_t end = begin + vt::unitAt(part, begin, hasClusters()).size;
      if (end >= part.size()) break;
      begin = end;
    }
    return first + begin;
  }

  void goForward() { m_at = next(); }
  void goBack() { m_at = previous(); }

  Class characterClass(bool bigWords) const {
    if (isOnLineEnd()) return Class::Blank;
    const std::string part = m_text.text(m_at, std::min(m_at + 4, m_text.end()));
    const DecodedScalar scalar = decodeUtf8(part.data(), part.data() + part.size());
    if (scalar.length == 0) return Class::Symbol;
    if (QChar::isSpace(scalar.scalar)) return Class::Blank;
    const bool isWord = bigWords || scalar.scalar == U'_' || QChar::isLetterOrNumber(scalar.scalar);
    return isWord ? Class::Word : Class::Symbol;
  }

 private:
  bool hasClusters() const { return m_text.summary(m_text.blockAt(m_at)).rule == ColumnRule::Clusters; }

  const HistoryText& m_text;
  TextPosition m_at;
};

TextPosition wordStart(const HistoryText& text, TextPosition from, bool bigWords) {
  Walker walker(text, from);
  const Class first = walker.characterClass(bigWords);
  if (first == Class::Blank && !walker.isAtEnd()) walker.goForward();
  while (first != Class::Blank && !walker.isAtEnd() && walker.characterClass(bigWords) == first) {
    walker.goForward();
  }
  while (!walker.isAtEnd() && walker.characterClass(bigWords) == Class::Blank && !walker.isOnEmptyLine()) {
    walker.goForward();
  }
  return walker.at();
}

TextPosition wordEnd(const HistoryText& text, TextPosition from, bool bigWords) {
  Walker walker(text, from);
  walker.goForward();
  while (!walker.isAtEnd() && walker.characterClass(bigWords) == Class::Blank) {
    walker.goForward();
  }
  if (walker.isAtEnd()) return walker.at();
  const Class kind = walker.characterClass(bigWords);
  TextPosition last = walker.at();
  while (!walker.isAtEnd() && walker.characterClass(bigWords) == kind) {
    last = walker.at();
    walker.goForward();
  }
  return last;
}

TextPosition wordBack(const HistoryText& text, TextPosition from, bool bigWords) {
  Walker walker(text, from);
  walker.goBack();
  while (!walker.isAtStart() && walker.characterClass(bigWords) == Class::Blank && !walker.isOnEmptyLine()) {
    walker.goBack();
  }
  const Class kind = walker.characterClass(bigWords);
  TextPosition first = walker.at();
  while (kind != Class::Blank && !walker.isAtStart()) {
    walker.goBack();
    if (walker.characterClass(bigWords) != kind) break;
    first = walker.at();
  }
  return first;
}

bool isBlankLine(const HistoryText& text, std::uint64_t line) {
  const TextPosition begin = text.lineStart(line);
  const std::string start = text.text(begin, std::min(begin + kBlanksOfALine, text.lineEnd(line)));
  return start.find_first_not_of(" \t") == start.npos;
}

TextPosition paragraphBack(const HistoryText& text, TextPosition from) {
  std::uint64_t line = text.lineAt(from);
  while (line > text.firstLine() && isBlankLine(text, line)) {
    --line;
  }
  while (line > text.firstLine() && !isBlankLine(text, line)) {
    --line;
  }
  return text.lineStart(line);
}

TextPosition paragraphForward(const HistoryText& text, TextPosition from) {
  const std::uint64_t end = text.endLine();
  std::uint64_t line = text.lineAt(from);
  while (line + 1 < end && isBlankLine(text, line)) {
    ++line;
  }
  while (line + 1 < end && !isBlankLine(text, line)) {
    ++line;
  }
  return isBlankLine(text, line) ? text.lineStart(line) : text.lineEnd(line);
}

TextPosition left(const HistoryText& text, TextPosition from) {
  const Walker walker(text, from);
  return std::max(walker.previous(), text.lineStart(text.lineAt(from)));
}

TextPosition right(const HistoryText& text, TextPosition from) {
  const Walker walker(text, from);
  return walker.isOnLineEnd() ? from : walker.next();
}

TextPosition lineText(const HistoryText& text, TextPosition from) {
  const TextPosition begin = text.lineStart(text.lineAt(from));
  Walker walker(text, begin);
  while (!walker.isOnLineEnd() && walker.characterClass(true) == Class::Blank) {
    walker.goForward();
  }
  return walker.at();
}

TextPosition movedOnce(const HistoryText& text, TextPosition from, CopyMotion motion) {
  switch (motion) {
    case CopyMotion::Left:
      return left(text, from);
    case CopyMotion::Right:
      return right(text, from);
    case CopyMotion::WordStart:
      return wordStart(text, from, false);
    case CopyMotion::WordEnd:
      return wordEnd(text, from, false);
    case CopyMotion::WordBack:
      return wordBack(text, from, false);
    case CopyMotion::BigWordStart:
      return wordStart(text, from, true);
    case CopyMotion::BigWordEnd:
      return wordEnd(text, from, true);
    case CopyMotion::BigWordBack:
      return wordBack(text, from, true);
    case CopyMotion::LineStart:
      return text.lineStart(text.lineAt(from));
    case CopyMotion::LineText:
      return lineText(text, from);
    case CopyMotion::LineEnd:
      return text.lineEnd(text.lineAt(from));
    case CopyMotion::ParagraphBack:
      return paragraphBack(text, from);
    case CopyMotion::ParagraphForward:
      return paragraphForward(text, from);
    case CopyMotion::TextStart:
      return text.begin();
    case CopyMotion::TextEnd:
      return text.end();
  }
  return from;
}

}  // namespace

TextPosition cursorPlace(const HistoryText& text, TextPosition position) {
  position = std::clamp(position, text.begin(), text.end());
  const Walker there(text, position);
  if (there.isOnLineEnd()) return there.isOnEmptyLine() ? position : there.previous();
  while (position > text.begin() && isUtf8Continuation(text.at(position))) {
    position = position - 1;
  }
  if (position == text.begin() || text.at(position - 1) == '\n') return position;
  // In the middle of a cell's text, the character before ends after this place.
  const TextPosition before = Walker(text, position).previous();
  return Walker(text, before).next() > position ? before : position;
}

TextPosition moved(const HistoryText& text, TextPosition from, CopyMotion motion, int count) {
  TextPosition at = cursorPlace(text, from);
  for (; count > 0; --count) {
    const TextPosition next = cursorPlace(text, movedOnce(text, at, motion));
    if (next == at) break;
    at = next;
  }
  return at;
}

TextPosition characterEnd(const HistoryText& text, TextPosition place) {
  const Walker walker(text, place);
  return walker.isOnLineEnd() ? place : walker.next();
}

}  // namespace zolt
