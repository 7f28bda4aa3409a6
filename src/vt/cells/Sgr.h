#pragma once

#include <span>
#include <string>

#include "vt/cells/Style.h"
#include "vt/parser/ControlSequence.h"
#include "vt/parser/Documented.h"

namespace zolt::vt {

/// A row of the SGR table, for one number or a range of them.
struct Rendition {
  int first = 0;
  int last = 0;
  /// `number` is between `first` and `last`, inclusive.
  void (*apply)(Style& style, int number) = nullptr;
  Documented documented;
};

/// Every rendition except those that take further parameters: 4 with a sub-parameter, 38, 48 and 58.
std::span<const Rendition> renditionTable();
/// The exceptions.
std::span<const Documented> longRenditions();

/// Applies the parameters from `begin` on to `style`, as SGR does (ECMA-48 8.3.117). Colours may have the form of
/// ISO 8613-6 (38:2::r:g:b, 38:2:r:g:b, 38:5:n) or xterm's (38;2;r;g;b, 38;5;n). Unknown renditions are skipped.
void applyRenditions(const ControlSequence& sequence, std::size_t begin, Style& style);

/// The SGR parameters that produce `style` from any other: the reply to DECRQSS. Begins with 0.
std::string renditionParameters(const Style& style);

}  // namespace zolt::vt
