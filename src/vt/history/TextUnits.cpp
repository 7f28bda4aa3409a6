#include "vt/history/TextUnits.h"

#include <string>

#include "text/CharacterWidth.h"
#include "text/GraphemeClusters.h"
#include "text/Utf8.h"
#include "vt/cells/CellTables.h"

namespace zolt::vt {

TextUnit unitAt(std::string_view text, std::size_t offset, bool clusters) {
  std::size_t length = 0;
  const char32_t first = scalarAt(text, offset, length);
  const CharacterProperties properties = characterProperties(first);
  TextUnit unit{.size = length, .width = properties.width == 2 ? 2 : 1};
  bool isPlain = properties.isPlain;
  std::u32string cluster;  // filled only when it has to be looked at
  while (offset + unit.size < text.size()) {
    const char32_t next = scalarAt(text, offset + unit.size, length);
    const CharacterProperties added = characterProperties(next);
    if (added.width != 0 && (!clusters || (isPlain && added.isPlain))) break;
    if (clusters) {
      if (cluster.empty()) cluster.push_back(first);
      if (added.width != 0 && !continuesCluster(cluster, next)) break;
      if (cluster.size() < CellTables::maxScalars) {
        cluster.push_back(next);
        if (widensCluster(first, next)) unit.width = 2;
      }
    }
    unit.size += length;
    isPlain = added.isPlain;
  }
  return unit;
}

}  // namespace zolt::vt
