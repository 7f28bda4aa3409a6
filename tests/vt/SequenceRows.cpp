#include "vt/SequenceRows.h"

#include "vt/ControlFunctions.h"
#include "vt/Modes.h"
#include "vt/SgrSequence.h"
#include "vt/StringFunctions.h"

namespace zolt::vt::test {

namespace {

template <class Table>
RowFamily familyOf(std::string_view title, const Table& table) {
  RowFamily family{.title = title, .rows = {}};
  for (const auto& row : table) {
    family.rows.push_back(&row.documented);
  }
  return family;
}

}  // namespace

std::vector<RowFamily> rowFamilies() {
  RowFamily longForms{.title = "Renditions with further numbers", .rows = {}};
  for (const Documented& row : longRenditions()) {
    longForms.rows.push_back(&row);
  }
  // In the order of controlFunctions().
  constexpr std::string_view kTitles[] = {"Cursor, tab stops and margins", "Erasing, inserting, deleting", "Rectangles",
                                          "Requests", "Settings"};
  std::vector<RowFamily> families{familyOf("Control characters", controlCharacters()),
                                  familyOf("Escape sequences", escapeFunctions())};
  for (std::size_t i = 0; const auto& table : controlFunctions()) {
    families.push_back(familyOf(kTitles[i++], table));
  }
  families.push_back(familyOf("Renditions", renditionTable()));
  families.push_back(longForms);
  families.push_back(familyOf("Modes", modeTable()));
  families.push_back(familyOf("Operating system commands", commands()));
  families.push_back(familyOf("Device control strings", deviceControls()));
  return families;
}

}  // namespace zolt::vt::test
