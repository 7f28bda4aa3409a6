#pragma once

#include <string_view>
#include <vector>

#include "vt/parser/Documented.h"

namespace zolt::vt::test {

/// A table of control functions.
struct RowFamily {
  std::string_view title;  ///< as a heading
  std::vector<const Documented*> rows;
};

std::vector<RowFamily> rowFamilies();

}  // namespace zolt::vt::test
