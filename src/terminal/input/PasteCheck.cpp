#include "terminal/input/PasteCheck.h"

#include <algorithm>

#include "terminal/VisibleText.h"
#include "text/CharacterWidth.h"
#include "text/GraphemeClusters.h"
#include "text/Utf8Decoder.h"
#include "vt/input/InputText.h"

namespace zolt {

namespace {

constexpr std::string_view kMore = "…";
constexpr std::string_view kReturn = "␍";
// Combining characters take no columns, but time.
constexpr std::size_t kMaxLineBytes = 32 * static_cast<std::size_t>(kPreviewColumns);

// The columns of one cluster of visible text, at most.
int columnsOf(std::string_view cluster) {
  int columns = 0;
  forEachScalar(cluster, [&](char32_t scalar) { columns += characterProperties(scalar).width; });
  return std::min(columns, 2);
}

// As much of a line of visible text as there is room for.
std::string_view fitting(std::string_view line) {
  int columns = 0;
  std::size_t end = 0;
  while (end < line.size()) {
    const std::size_t next = clusterEnd(line, end);
    columns += columnsOf(line.substr(end, next - end));
    if (columns > kPreviewColumns || next > kMaxLineBytes) break;
    end = next;
  }
  return line.substr(0, end);
}

class Preview {
 public:
  void add(char32_t scalar) {
    if (m_line.size() <= kMaxLineBytes) appendVisible(m_line, scalar);
  }
  void endLine(bool hasEnd) {
    if (m_lines < kPreviewLines) {
      if (m_lines > 0) m_text += '\n';
      const std::string_view start = fitting(m_line);
      m_text += start;
      if (start.size() < m_line.size()) m_text += kMore;
      if (hasEnd) m_text += kReturn;
    } else if (m_lines == kPreviewLines) {
      m_text.append("\n").append(kMore);
    }
    ++m_lines;
    m_line.clear();
  }
  std::size_t lines() const { return m_lines; }
  std::string takeText() { return std::move(m_text); }

 private:
  std::string m_text;
  std::string m_line;
  std::size_t m_lines = 0;
};

}  // namespace

PasteCheck checkPaste(std::string_view text, bool bracketed) {
  PasteCheck check;
  Preview preview;
  bool afterReturn = false;
  bool insideLine = false;
  forEachScalar(text, [&](char32_t scalar) {
    const bool completesLineEnd = afterReturn && scalar == '\n';
    afterReturn = scalar == '\r';
    if (completesLineEnd) return;
    insideLine = scalar != '\n' && scalar != '\r';
    if (!insideLine) return preview.endLine(true);
    check.hasControls = check.hasControls || (vt::isControl(scalar) && scalar != '\t');
    preview.add(scalar);
  });
  check.endsWithLineEnd = !text.empty() && !insideLine;
  if (insideLine) preview.endLine(false);
  check.lines = preview.lines();
  check.mustAsk = !bracketed && (check.lines > 1 || check.endsWithLineEnd || check.hasControls);
  check.preview = preview.takeText();
  return check;
}

}  // namespace zolt
