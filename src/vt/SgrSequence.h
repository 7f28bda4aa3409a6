#pragma once

#include <span>
#include <string>

#include "vt/ControlSequence.h"
#include "vt/Documented.h"
#include "vt/Style.h"

namespace zolt::vt {

/// What the rendition of SGR with a number does; a range where several do alike.
struct Rendition {
  int first = 0;
  int last = 0;
  /// `number` is from `first` to `last`, ends included.
  void (*apply)(Style& style, int number) = nullptr;
  Documented documented;
};

/// All renditions but 4 with a form, 38, 48 and 58, which take further parameters.
std::span<const Rendition> renditionTable();
/// Those that do.
std::span<const Documented> longRenditions();

/// Changes a style as SGR (ECMA-48 8.3.117) with `sequence`'s parameters from `begin` on says. Colours in the forms of
/// ISO 8613-6 (38:2::r:g:b, 38:2:r:g:b, 38:5:n) and xterm's (38;2;r;g;b, 38;5;n). What is not known is passed over.
void applyRenditions(const ControlSequence& sequence, std::size_t begin, Style& style);

/// The parameters by which SGR makes this style: what DECRQSS answers. Begins with 0.
std::string renditionParameters(const Style& style);

}  // namespace zolt::vt
