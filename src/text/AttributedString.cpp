#include "text/AttributedString.h"

#include <algorithm>
#include <optional>

namespace zolt {

AttributedString::AttributedString(std::string_view text, const TextAttributes& attributes) {
  appendText(text);
  endRun(attributes);
}

void AttributedString::endRun(StyleCode style) {
  while (m_covered < m_text.size()) {
    const auto length = static_cast<std::uint32_t>(std::min<std::size_t>(pendingLength(), UINT32_MAX));
    m_runs.push_back({.style = style, .length = length});
    m_covered += length;
  }
}

void AttributedString::endRun(const TextAttributes& attributes) {
  if (pendingLength() == 0) return;
  std::optional<StyleCode> code = StyleCode::of(attributes);
  if (!code) {
    if (m_listed.empty() || m_listed.back() != attributes) m_listed.push_back(attributes);
    code = StyleCode::listed(m_listed.size() - 1);
  }
  endRun(*code);
}

}  // namespace zolt
