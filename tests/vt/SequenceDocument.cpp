#include "vt/SequenceDocument.h"

#include <algorithm>
#include <map>
#include <vector>

#include "vt/SequenceCase.h"
#include "vt/SequenceRows.h"

namespace zolt::vt::test {

namespace {

constexpr std::size_t kMaxSayings = 3;

constexpr std::string_view kIntroduction =
    R"(# Escape sequences

What Zolt's full emulation obeys, row by row as the tables in `src/vt/` have it, and what is tested of each row. Everything
else is passed over. Written by `scripts/document-sequences`: change the tables or the cases in `tests/vt/`, not this file.

ESC is the byte 0x1B. CSI is `ESC [`, OSC is `ESC ]`, DCS is `ESC P` and ST is `ESC \`; the C1 forms in UTF-8 (U+0080 to
U+009F) do as well, and BEL ends an OSC, too. Ps is a number, Pm are several with semicolons between, Pt is text, SP is a
blank. Modes are listed as they are set; `l` in place of `h` resets them.
)";

// As text in a cell of a table.
std::string escaped(std::string_view text) {
  constexpr std::string_view kSpecial = "\\`*_<>[]|#~";
  std::string out;
  for (const char c : text) {
    if (kSpecial.find(c) != std::string_view::npos) out += '\\';
    out += c;
  }
  return out;
}

// As code in a cell of a table.
std::string asCode(std::string_view text) {
  const bool hasTick = text.find('`') != std::string_view::npos;
  std::string out = hasTick ? "`` " : "`";
  for (const char c : text) {
    if (c == '|') out += '\\';
    out += c;
  }
  return out + (hasTick ? " ``" : "`");
}

std::string joined(const std::vector<std::string_view>& sayings) {
  if (sayings.empty()) return std::string(kUntested);
  std::string text;
  for (std::size_t i = 0; i < std::min(sayings.size(), kMaxSayings); ++i) {
    text += (i == 0 ? "" : "; ") + escaped(sayings[i]);
  }
  if (sayings.size() > kMaxSayings) text += " and " + std::to_string(sayings.size() - kMaxSayings) + " more";
  return text;
}

}  // namespace

std::string sequenceDocument() {
  std::map<std::string_view, std::vector<std::string_view>> sayings;
  for (const SequenceCase* const each : allCases()) {
    for (const std::string_view name : coveredNames(*each)) {
      sayings[name].push_back(each->says);
    }
  }
  std::string text(kIntroduction);
  for (const RowFamily& family : rowFamilies()) {
    text += "\n## " + std::string(family.title) + "\n\n";
    text += "| Sequence | Name | Origin | What it does | Tested |\n| --- | --- | --- | --- | --- |\n";
    for (const Documented* const row : family.rows) {
      text += "| " + asCode(row->sequence) + " | " + escaped(row->name) + " | " + escaped(row->origin) + " | " +
              escaped(row->meaning) + " | " + joined(sayings[row->name]) + " |\n";
    }
  }
  return text;
}

}  // namespace zolt::vt::test
