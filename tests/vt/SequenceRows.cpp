#include "vt/SequenceRows.h"

#include "vt/cells/Sgr.h"
#include "vt/functions/Csi.h"
#include "vt/functions/Dcs.h"
#include "vt/functions/Esc.h"
#include "vt/functions/Modes.h"
#include "vt/functions/Osc.h"

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
  RowFamily longForms{.title = "Renditions with further parameters", .rows = {}};
  for (const Documented& row : longRenditions()) {
    longForms.rows.push_back(&row);
  }
  // In the order of csiTables().
  constexpr std::string_view kTitles[] = {"Cursor, tab stops and margins", "Erasing, inserting, deleting", "Rectangles",
                                          "Requests", "Settings"};
  std::vector<RowFamily> families{familyOf("Control characters", c0Controls()),
                                  familyOf("Escape sequences", escFunctions())};
  for (std::size_t i = 0; const auto& table : csiTables()) {
    families.push_back(familyOf(kTitles[i++], table));
  }
  families.push_back(familyOf("Renditions", renditionTable()));
  families.push_back(longForms);
  families.push_back(familyOf("Modes", modeTable()));
  families.push_back(familyOf("Operating system commands", oscCommands()));
  families.push_back(familyOf("Device control strings", dcsFunctions()));
  return families;
}

}  // namespace zolt::vt::test
