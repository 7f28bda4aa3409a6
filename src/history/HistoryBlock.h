#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/StyleCode.h"
#include "text/TextAttributes.h"

namespace zolt {

/// The marks of shell integration (A to D of OSC 133).
enum class HistoryMarkKind : std::uint8_t { PromptStart, CommandStart, OutputStart, CommandEnd };

/// A mark between two characters of a block.
struct HistoryMark {
  std::uint32_t offset = 0;  ///< of the byte after it; equal to the size of the text at the end
  HistoryMarkKind kind = HistoryMarkKind::PromptStart;
  std::int32_t exitStatus = 0;  ///< of a CommandEnd

  friend bool operator==(const HistoryMark&, const HistoryMark&) = default;
};

/// Text from `begin` to the start of the next run, with one style and one link.
struct HistoryRun {
  std::uint32_t begin = 0;
  std::uint16_t style = 0;  ///< an index into the block's styles or packed styles
  std::uint32_t link = 0;   ///< the terminal's number for the link target, 0 for none

  friend bool operator==(const HistoryRun&, const HistoryRun&) = default;
};

/// A style of the full emulation in its packed form; colours may refer to the palette.
struct PackedStyle {
  std::uint32_t foreground = 0;
  std::uint32_t background = 0;
  std::uint32_t underlineColor = 0;
  std::uint32_t rendition = 0;

  friend bool operator==(const PackedStyle&, const PackedStyle&) = default;
};

/// A block of a terminal's history: UTF-8 text with all that belongs to it. The log display uses text, styles and runs.
/// The full emulation uses packed styles instead of styles, and adds soft wraps, marks and links.
struct HistoryBlock {
  std::string text;
  std::vector<StyleCode> styles;
  std::vector<TextAttributes> listedStyles;  ///< those that do not fit a code
  std::vector<PackedStyle> packedStyles;
  std::vector<HistoryRun> runs;          ///< in order; the first begins at 0 unless the text is empty
  std::vector<std::uint32_t> softWraps;  ///< offsets where a row starts that continues its line, ascending
  std::vector<HistoryMark> marks;        ///< in order
  std::vector<std::string> links;        ///< the targets, numbered from 1; empty when they are kept elsewhere
  bool clusters = false;                 ///< a cell held a grapheme cluster, not a character

  friend bool operator==(const HistoryBlock&, const HistoryBlock&) = default;
};

/// Encodes a block from its parts, without copying them into a HistoryBlock. Add everything in the order of the text.
class HistoryEncoder {
 public:
  void addStyles(const std::vector<StyleCode>& styles, const std::vector<TextAttributes>& listed);
  void addRun(const HistoryRun& run);
  void addSoftWrap(std::uint32_t offset);
  void addMark(const HistoryMark& mark);
  void addPackedStyle(const PackedStyle& style);
  void addLink(std::string_view target);
  void setClusters() { m_clusters = true; }
  /// The encoded block with this text.
  std::string finish(std::string_view text);

 private:
  std::string m_styles;
  std::string m_listedStyles;
  std::string m_runs;
  std::string m_softWraps;
  std::string m_marks;
  std::string m_packedStyles;
  std::string m_links;
  bool m_clusters = false;
  HistoryRun m_lastRun;
  std::uint32_t m_lastWrap = 0;
  std::uint32_t m_lastMark = 0;
};

/// Encodes a block as sections of tag, length and content; offsets are stored as differences, in base 128.
std::string encodeHistoryBlock(const HistoryBlock& block);
/// Decodes a block; nothing when the bytes are invalid. Safe for any bytes. Unknown sections are skipped, so that later
/// versions can add some.
std::optional<HistoryBlock> decodeHistoryBlock(std::string_view bytes);
/// Only the text of an encoded block, as a view into `bytes`; nothing when they are invalid.
std::optional<std::string_view> textOfHistoryBlock(std::string_view bytes);

}  // namespace zolt
