#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/TextAttributes.h"

namespace zolt {

/// Text with styles: UTF-8 and the runs that cover it without gaps, in order.
///
/// Each different style stands once in `styles`; runs name it by index. A value type, cheap to move. A run has at most
/// 4 GiB; longer text of one style becomes several.
class AttributedString {
 public:
  /// `length` bytes of the text, never 0, in the style `styles()[style]`.
  struct Run {
    std::uint32_t length = 0;
    std::uint32_t style = 0;

    friend bool operator==(const Run&, const Run&) = default;
  };

  AttributedString() = default;
  /// One run with `attributes`; no run when `text` is empty.
  AttributedString(std::string_view text, const TextAttributes& attributes);

  bool empty() const { return m_text.empty(); }
  std::string_view text() const { return m_text; }
  const std::vector<Run>& runs() const { return m_runs; }
  const std::vector<TextAttributes>& styles() const { return m_styles; }
  const TextAttributes& attributes(const Run& run) const { return m_styles[run.style]; }

  /// Makes room for `bytes` of text and `runs` runs in all.
  void reserve(std::size_t bytes, std::size_t runs) {
    m_text.reserve(bytes);
    m_runs.reserve(runs);
  }

  /// The index of `attributes` in `styles()`, added there when it is new.
  std::uint32_t styleIndex(const TextAttributes& attributes);

  /// Adds text that belongs to no run yet; `endRun` must follow before the string is read.
  void appendText(std::string_view text) { m_text.append(text); }
  void appendText(char character) { m_text.push_back(character); }
  /// Takes back the last byte of text that belongs to no run yet.
  void dropLastByte() { m_text.pop_back(); }
  /// The bytes that belong to no run yet.
  std::size_t pendingLength() const { return m_text.size() - m_covered; }
  /// Makes one run of the text that belongs to none yet, if there is any.
  void endRun(std::uint32_t style);

 private:
  std::string m_text;
  std::vector<Run> m_runs;
  std::vector<TextAttributes> m_styles;
  std::vector<std::uint32_t> m_buckets;  // hash -> style + 1, a power of two of them; empty while styles are few
  std::size_t m_covered = 0;             // bytes of m_text that runs cover

  void rehash();
};

}  // namespace zolt
