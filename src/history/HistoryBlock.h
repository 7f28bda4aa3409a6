#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/StyleCode.h"
#include "text/TextAttributes.h"

namespace zolt {

/// What a shell's integration tells of its prompts and commands (the marks A to D of OSC 133).
enum class HistoryMarkKind : std::uint8_t { PromptStart, CommandStart, OutputStart, CommandEnd };

/// A mark between two characters of a block.
struct HistoryMark {
  std::uint32_t offset = 0;  ///< of the byte that follows it, up to the size of the text (included)
  HistoryMarkKind kind = HistoryMarkKind::PromptStart;
  std::int32_t exitStatus = 0;  ///< of a CommandEnd

  friend bool operator==(const HistoryMark&, const HistoryMark&) = default;
};

/// Text from `begin` to where the next run begins, in one style and of one link.
struct HistoryRun {
  std::uint32_t begin = 0;
  std::uint16_t style = 0;  ///< an index into the block's styles, or the packed ones
  std::uint32_t link = 0;   ///< the number that the terminal gave a link target; 0: none

  friend bool operator==(const HistoryRun&, const HistoryRun&) = default;
};

/// A style of a full emulation, whose colours may be the palette's, as it packs it.
struct PackedStyle {
  std::uint32_t foreground = 0;
  std::uint32_t background = 0;
  std::uint32_t underlineColor = 0;
  std::uint32_t rendition = 0;

  friend bool operator==(const PackedStyle&, const PackedStyle&) = default;
};

/// A piece of a terminal's history as it is kept: UTF-8 text with everything that belongs to it. The log display fills
/// text, styles and runs; packed styles instead of those, wrapped lines, marks and links come from a full emulation.
struct HistoryBlock {
  std::string text;
  std::vector<StyleCode> styles;
  std::vector<TextAttributes> listedStyles;  ///< those that do not fit a code
  std::vector<PackedStyle> packedStyles;
  std::vector<HistoryRun> runs;          ///< in order; the first at 0 unless the text is empty
  std::vector<std::uint32_t> softWraps;  ///< offsets where a row begins that goes on with the line before, ascending
  std::vector<HistoryMark> marks;        ///< in order
  std::vector<std::string> links;        ///< the targets by number, the first is 1; none where they are kept elsewhere

  friend bool operator==(const HistoryBlock&, const HistoryBlock&) = default;
};

/// Makes the bytes of a block from parts that lie elsewhere. Everything is added in the order of the text.
class HistoryEncoder {
 public:
  void addStyles(const std::vector<StyleCode>& styles, const std::vector<TextAttributes>& listed);
  void addRun(const HistoryRun& run);
  void addSoftWrap(std::uint32_t offset);
  void addMark(const HistoryMark& mark);
  void addPackedStyle(const PackedStyle& style);
  void addLink(std::string_view target);
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
  HistoryRun m_lastRun;
  std::uint32_t m_lastWrap = 0;
  std::uint32_t m_lastMark = 0;
};

/// The bytes of a block: sections of tag, length and content, numbers as differences in base 128.
std::string encodeHistoryBlock(const HistoryBlock& block);
/// The block, or nothing where the bytes are not those of one: any bytes are safe. Sections that it does not know are
/// passed over, so that a later version may add some.
std::optional<HistoryBlock> decodeHistoryBlock(std::string_view bytes);
/// Only the block's text, which lies in `bytes`; nothing where they are none.
std::optional<std::string_view> textOfHistoryBlock(std::string_view bytes);

}  // namespace zolt
