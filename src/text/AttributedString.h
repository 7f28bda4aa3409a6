#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/StyleCode.h"
#include "text/TextAttributes.h"

namespace zolt {

/// Text with styles: UTF-8 and the runs that cover it without gaps, in order.
///
/// A value type, cheap to move. A run has at most 4 GiB; longer text of one style becomes several.
class AttributedString {
 public:
  /// `length` bytes of the text, never 0, in one style.
  struct Run {
    StyleCode style;
    std::uint32_t length = 0;

    friend bool operator==(const Run&, const Run&) = default;
  };

  AttributedString() = default;
  /// One run with `attributes`, or none when `text` is empty.
  AttributedString(std::string_view text, const TextAttributes& attributes);

  bool empty() const { return m_text.empty(); }
  std::string_view text() const { return m_text; }
  const std::vector<Run>& runs() const { return m_runs; }
  /// The style of one of this string's runs.
  TextAttributes attributes(const Run& run) const {
    return run.style.isListed() ? m_listed[run.style.listIndex()] : run.style.attributes();
  }

  /// Reserves memory for `bytes` of text and `runs` runs in total.
  void reserve(std::size_t bytes, std::size_t runs) {
    m_text.reserve(bytes);
    m_runs.reserve(runs);
  }

  /// Adds text that belongs to no run yet; `endRun` must follow before the string is read.
  void appendText(std::string_view text) { m_text.append(text); }
  void appendText(char character) { m_text.push_back(character); }
  /// Removes the last byte appended; at least one must be pending.
  void dropLastByte() { m_text.pop_back(); }
  /// The number of bytes appended since the last `endRun`.
  std::size_t pendingLength() const { return m_text.size() - m_covered; }
  /// Makes one run of the text that belongs to none yet, if there is any. `style` is packed.
  void endRun(StyleCode style);
  void endRun(const TextAttributes& attributes);

 private:
  std::string m_text;
  std::vector<Run> m_runs;
  std::vector<TextAttributes> m_listed;  // the styles that do not fit a code
  std::size_t m_covered = 0;             // bytes of m_text that runs cover
};

}  // namespace zolt
