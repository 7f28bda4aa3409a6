#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vt/Terminal.h"

namespace zolt::vt::test {

/// A test of a row in the tables of control functions: what is fed to a terminal, and what is expected of it then. At
/// least one expectation must be given.
struct SequenceCase {
  std::string_view covers;  ///< names of rows, separated by commas: "CUU", "SGR 1", "DECSET 2004"
  std::string_view says;    ///< what the row does, as a predicate
  std::string_view input;
  int rows = 5;
  int columns = 10;
  /// Uses `readableSettings()`.
  bool allowsReading = false;
  /// Rows separated by line feeds, without trailing blanks and blank rows; '~' is an erased cell with attributes.
  std::optional<std::string_view> screen{};
  /// "row,column", from 1; followed by '+' if a wrap is pending.
  std::optional<std::string_view> cursor{};
  /// Byte for byte.
  std::optional<std::string_view> replies{};
  /// The runs of the first row, each as "[parameters]text" with the parameters that DECRQSS reports, followed by "!" if
  /// it is protected and "<URI>" if it is a link.
  std::optional<std::string_view> runs{};
  std::optional<std::string_view> title{};
  /// Anything else.
  bool (*holds)(Terminal& terminal) = nullptr;
};

std::span<const SequenceCase> controlCases();
std::span<const SequenceCase> cursorCases();
std::span<const SequenceCase> editingCases();
std::span<const SequenceCase> rectangleCases();
std::span<const SequenceCase> renditionCases();
std::span<const SequenceCase> modeCases();
std::span<const SequenceCase> reportCases();
std::span<const SequenceCase> settingCases();
std::span<const SequenceCase> stringCases();

std::vector<const SequenceCase*> allCases();
/// The names in `covers`.
std::vector<std::string_view> coveredNames(const SequenceCase& given);

/// Settings that allow every report.
TerminalSettings readableSettings();

/// A terminal's state in the notation of a case.
std::string screenText(const Terminal& terminal);
std::string cursorText(const Terminal& terminal);
std::string firstRowRuns(const Terminal& terminal);

}  // namespace zolt::vt::test
