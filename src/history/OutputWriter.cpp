#include "history/OutputWriter.h"

#include "history/TextBlock.h"

namespace zolt {

namespace {

class TextOutputStyles : public OutputStyles {
 public:
  explicit TextOutputStyles(OutputWriter::AppendStyle append) : m_append(append) {}

  void changeTo(const LineBlock& block, std::size_t run, std::string& out) override {
    const auto& text = static_cast<const TextBlock&>(block);
    changeTo(text.styles()[text.styleRuns()[run].style], out);
  }
  void finish(std::string& out) override { changeTo(TextAttributes(), out); }

 private:
  void changeTo(const TextAttributes& style, std::string& out) {
    if (style != m_style) m_append(out, m_style, style);
    m_style = style;
  }

  OutputWriter::AppendStyle m_append;
  TextAttributes m_style;
};

}  // namespace

std::unique_ptr<OutputStyles> textOutputStyles(OutputWriter::AppendStyle appendStyle) {
  return std::make_unique<TextOutputStyles>(appendStyle);
}

OutputWriter::OutputWriter(AppendStyle appendStyle) : OutputWriter(textOutputStyles(appendStyle)) {}

void OutputWriter::append(const TextSnapshot& text, std::size_t index, std::string& out) {
  if (m_styles) {
    appendStyled(*text.block(index), out);
  } else {
    const BlockText held = text.text(index);
    appendLines(withoutRestOfLineEnd(held.text()), out);
  }
}

void OutputWriter::appendStyled(const LineBlock& block, std::string& out) {
  for (std::size_t run = 0; run < block.runCount(); ++run) {
    const std::size_t begin = block.runBegin(run);
    const std::size_t end = run + 1 < block.runCount() ? block.runBegin(run + 1) : block.size();
    const std::string_view text = withoutRestOfLineEnd(block.text().substr(begin, end - begin));
    if (!text.empty()) m_styles->changeTo(block, run, out);
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
  if (m_styles) m_styles->finish(out);
}

}  // namespace zolt
