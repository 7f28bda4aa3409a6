#pragma once

#include <cstddef>
#include <string>

#include "history/OutputWriter.h"
#include "vt/cells/Style.h"

namespace zolt::vt {

/// Shows the styles of a scrollback in a file as SGR sequences (ECMA-48 8.3.117 and its common extensions): all that a
/// style has, colours of the palette by their number. Links are not written.
class ScrollbackStyles : public OutputStyles {
 public:
  void changeTo(const LineBlock& block, std::size_t run, std::string& out) override;
  void finish(std::string& out) override;

 private:
  void changeTo(const Style& style, std::string& out);

  Style m_style;
};

}  // namespace zolt::vt
