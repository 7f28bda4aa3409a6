#include "vt/history/ScrollbackStyles.h"

#include "vt/cells/Sgr.h"
#include "vt/history/ScrollbackBlock.h"

namespace zolt::vt {

void ScrollbackStyles::changeTo(const LineBlock& block, std::size_t run, std::string& out) {
  changeTo(static_cast<const ScrollbackBlock&>(block).styleOfRun(run), out);
}

void ScrollbackStyles::finish(std::string& out) {
  changeTo(Style(), out);
}

void ScrollbackStyles::changeTo(const Style& style, std::string& out) {
  if (style == m_style) return;
  out += "\033[" + renditionParameters(style) + 'm';
  m_style = style;
}

}  // namespace zolt::vt
