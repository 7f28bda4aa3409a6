#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// One thing that a row of the tables of control functions does: what is fed to a terminal, and what is seen then. What
/// is not given is not looked at; something has to be.
struct SequenceCase {
  std::string_view covers;  ///< the name of the row, or several with a comma between: "CUU", "SGR 1", "DECSET 2004"
  std::string_view says;    ///< a sentence
  std::string_view input;
  int rows = 5;
  int columns = 10;
  /// Whether the settings let a program read everything back; else they are the defaults.
  bool allowsReading = false;
  /// Rows with a line feed between, without what is blank at their ends and at the end of the screen; '~' is a place
  /// with a look where nothing was written.
  std::optional<std::string_view> screen{};
  /// "row,column", from 1 as programs count; a '+' behind it where the next character wraps.
  std::optional<std::string_view> cursor{};
  /// What the program is answered, byte for byte.
  std::optional<std::string_view> replies{};
  /// The first row's runs: each "[parameters]text" as DECRQSS names renditions, with "!" behind protected text and
  /// "<address>" behind a link.
  std::optional<std::string_view> runs{};
  std::optional<std::string_view> title{};
  /// Anything else.
  bool (*holds)(Terminal& terminal) = nullptr;
};

/// The cases by what they are about.
std::span<const SequenceCase> controlCases();
std::span<const SequenceCase> cursorCases();
std::span<const SequenceCase> editingCases();
std::span<const SequenceCase> rectangleCases();
std::span<const SequenceCase> renditionCases();
std::span<const SequenceCase> modeCases();
std::span<const SequenceCase> reportCases();
std::span<const SequenceCase> settingCases();
std::span<const SequenceCase> stringCases();

/// All of them.
std::vector<const SequenceCase*> allCases();
/// The names of the rows that a case covers.
std::vector<std::string_view> coveredNames(const SequenceCase& given);

/// Settings that let a program read everything back.
TerminalSettings readableSettings();

/// A terminal as the fields of a case tell it.
std::string screenText(const Terminal& terminal);
std::string cursorText(const Terminal& terminal);
std::string firstRowRuns(const Terminal& terminal);

}  // namespace zolt::vt::test
