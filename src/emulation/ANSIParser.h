#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "emulation/Rendition.h"
#include "text/AttributedString.h"
#include "text/StyleCode.h"

namespace zolt {

/// Turns decoded shell output into styled text for a log.
///
/// There is no cursor and no grid: Select Graphic Rendition (ECMA-48 8.3.117, SGR) changes the rendition of the text
/// that follows; all other escape sequences are consumed without effect. Only ASCII is shown: single code points from
/// U+0020 to U+007F, line feed, carriage return and tab. Everything else is dropped on purpose, including the cluster
/// that a CR LF pair forms.
///
/// The rendition carries over from one `parse` to the next; an unfinished sequence does not. Not synchronised: one
/// thread at a time.
class ANSIParser {
 public:
  ANSIParser() = default;

  /// The styled text of one chunk. `text` is valid UTF-8 and is read by extended grapheme clusters (UAX #29).
  ///
  /// Stops the program for a negative 256-colour index ("38;5;-1") and for one whose grey level overflows.
  AttributedString parse(std::string_view text);

 private:
  /// What the functions below return if no complete sequence starts there; else the position after the sequence. An
  /// optional would pass through memory, which costs more than reading a short sequence.
  static constexpr std::size_t kNoSequence = std::string_view::npos;

  std::size_t parseEscapeSequence(std::string_view text, std::size_t escape);
  std::size_t parseCSI(std::string_view text, std::size_t bracket);
  static std::size_t parseOSC(std::string_view text, std::size_t bracket);
  void handleCSICommand(std::string_view command, std::string_view params);
  void handleSGR(std::string_view params);
  /// Applies the sequence at `bracket` in one pass if it is SGR with only short numbers and semicolons; else nothing.
  std::size_t parsePlainSGR(std::string_view text, std::size_t bracket);
  void apply(std::span<const std::int64_t> codes);
  /// Turns the pending text into one run in the current rendition; does nothing if there is none.
  void makeAttributedString(AttributedString& result);

  Rendition m_rendition;
  StyleCode m_style;                          // of the rendition, where it fits one
  std::size_t m_runsInLastChunk = 0;          // the next is likely to have about as many
  std::array<std::int64_t, 32> m_plainCodes;  // of the sequence being read
  std::vector<std::int64_t> m_codes;          // of one that is not plain
};

}  // namespace zolt
