#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "emulation/StyledRuns.h"

namespace zolt {

/// The rules of the log's parser, written down as plainly as possible: one extended grapheme cluster at a time,
/// compared as strings are (by canonical composition), with no fast paths. ANSIParser is tested against it; they share
/// only the cluster code.
class ReferenceParser {
 public:
  /// The runs of one chunk.
  StyledRuns parse(std::string_view text);

  /// Whether a code was met that stops the program: a palette index that is negative or too large for its grey level.
  bool stopsTheProgram() const { return m_stops; }

 private:
  using Characters = std::vector<std::string>;
  using Position = std::optional<std::size_t>;

  Position parseEscapeSequence(const Characters& text, std::size_t escape);
  Position parseCSI(const Characters& text, std::size_t bracket);
  Position parseOSC(const Characters& text, std::size_t bracket);
  void handleSGR(const Characters& params);
  Color color256(std::int64_t n);
  StyledRun makeRun(const std::string& text) const;

  Color m_foreground{1, 1, 1, 1};
  Color m_background{0, 0, 0, 0};
  bool m_bold = false;
  bool m_dim = false;
  bool m_italic = false;
  bool m_underline = false;
  bool m_reverse = false;
  bool m_hidden = false;
  bool m_strikethrough = false;
  bool m_stops = false;
};

}  // namespace zolt
