#include "history/OutputWriter.h"

namespace zolt {

void OutputWriter::append(const TextSnapshot& text, std::size_t index, std::string& out) {
  if (m_appendStyle != nullptr) {
    appendStyled(*text.block(index), out);
  } else {
    const BlockText held = text.text(index);
    appendLines(withoutRestOfLineEnd(held.text()), out);
  }
}

void OutputWriter::appendStyled(const TextBlock& block, std::string& out) {
  const auto& runs = block.styleRuns();
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const std::size_t end = i + 1 < runs.size() ? runs[i + 1].begin : block.size();
    const std::string_view text = withoutRestOfLineEnd(block.text().substr(runs[i].begin, end - runs[i].begin));
    if (!text.empty()) {
      const TextAttributes style = block.styles()[runs[i].style];
      if (style != m_style) m_appendStyle(out, m_style, style);
      m_style = style;
    }
    appendLines(text, out);
  }
}

std::string_view OutputWriter::withoutRestOfLineEnd(std::string_view text) const {
  return text.substr(m_afterReturn && text.starts_with('\n') ? 1 : 0);
}

void OutputWriter::appendLines(std::string_view text, std::string& out) {
  m_afterReturn = text.ends_with('\r');
  for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r')) {
    out += text.substr(0, at);
    out += '\n';
    text.remove_prefix(text.substr(at).starts_with("\r\n") ? at + 2 : at + 1);
  }
  out += text;
}

void OutputWriter::finish(std::string& out) {
  if (m_style != TextAttributes{}) m_appendStyle(out, m_style, {});
  m_style = {};
}

}  // namespace zolt
