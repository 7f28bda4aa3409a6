#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "canvas/RowSource.h"
#include "history/RowIndex.h"
#include "terminal/CellLooks.h"
#include "terminal/Emulator.h"
#include "terminal/ScreenLines.h"
#include "vt/history/ScrollbackText.h"

namespace zolt {

/// The rows of the full emulation: the scrollback, and below it the screen; on the alternate screen that alone.
///
/// Positions count the bytes of the text from the session's start, a line end one, so that a line keeps its places when
/// it scrolls off, comes back or is wrapped anew. The alternate screen has places of its own.
class EmulationSource : public RowSource {
 public:
  /// `emulator` must outlive the source.
  explicit EmulationSource(Emulator& emulator);

  /// Called with the events of each update, within `sync`.
  std::function<void(const vt::TerminalEvents& events)> onEvents;
  /// Called within `sync` when there is a new snapshot.
  std::function<void()> onScreen;

  CellLooks& looks() { return m_looks; }
  /// The latest that was taken; never null.
  const std::shared_ptr<const vt::ScreenSnapshot>& screen() const { return m_screen; }
  void setWordSeparators(std::string separators) { m_wordSeparators = std::move(separators); }
  /// The text that is shown, for find: scrollback and screen as one text, or the alternate screen alone.
  vt::ScrollbackView shownText() const;
  /// Scrollback and primary screen, for saving, whichever screen is shown.
  vt::ScrollbackView wholeText() const;

  void sync() override;
  int columns() const override { return m_screen->size.columns; }
  void setColumns(int) override {}  // the engine wraps
  std::int64_t rowCount() const override { return historyRows() + screenRows(); }
  int screenRows() const override { return static_cast<int>(m_lines.rowCount()); }
  std::uint64_t generation() const override { return m_rows.generation() + m_generation; }
  bool refine() override { return m_rows.refine(kRefinedAtOnce); }

  std::shared_ptr<const RowContent> content(CanvasRow row) override;
  TextRange rowRange(CanvasRow row) override;
  CanvasRow rowAt(TextPosition position) override;
  CanvasRow roughRowAt(TextPosition position) const override;
  std::optional<CanvasCursor> cursor() const override;
  TextPosition moved(TextPosition position) const override;

  TextPosition begin() const override;
  TextPosition end() const override;
  std::string text(TextRange range) const override;
  std::string copiedText(TextRange range) const override;
  TextRange wordAt(TextPosition position) const override;
  TextRange lineAt(TextPosition position) const override;
  TextPosition characterBefore(TextPosition position) const override;
  std::optional<CanvasLink> linkAt(TextPosition position) const override;

  /// A line, or what of it is near a range of the text.
  struct LinePart {
    TextRange range;                      ///< without its line end
    std::string text;                     ///< a byte for each place of the range
    std::vector<CanvasLink> markedLinks;  ///< that the program has marked (OSC 8), in order
  };
  /// The lines that `range` touches, from top to bottom, of long ones what is near it.
  std::vector<LinePart> linesIn(TextRange range) const;

 private:
  // Blocks counted per background step: a few tenths of a millisecond, as each may have to be fetched.
  static constexpr std::size_t kRefinedAtOnce = 4;

  bool isOnScreen(TextPosition position) const { return position >= m_lines.start(); }
  std::int64_t historyRows() const { return m_screen->isAlternate ? 0 : m_rows.rowCount(); }
  void show(std::shared_ptr<const vt::ScreenSnapshot> screen);
  std::shared_ptr<const RowContent> historyContent(CanvasRow row);
  std::shared_ptr<const RowContent> screenContent(std::size_t row);
  vt::ScrollbackView withRows(const vt::ScrollbackView& history, const vt::ScreenSnapshot::Rows& rows) const;
  std::string rawText(TextRange range) const;
  /// The part of the line around `position` that is near it.
  TextRange near(TextPosition position) const;
  /// The part that is near `range`, which is in the line.
  TextRange near(TextRange line, TextRange range) const;
  /// The links that the program has marked in a part of a line.
  std::vector<CanvasLink> markedLinks(TextRange line) const;

  Emulator& m_emulator;
  std::shared_ptr<const vt::ScreenSnapshot> m_screen;
  vt::ScrollbackText m_history;
  RowIndex m_rows;  // of m_history
  ScreenLines m_lines;
  ScreenLines m_before;  // as of the sync before
  std::uint64_t m_generation = 0;
  CellLooks m_looks;
  std::uint64_t m_looksVersion = 0;
  std::string m_wordSeparators;
  std::unordered_map<std::uint64_t, std::shared_ptr<const RowContent>> m_contents;  // of screen rows, by stamp
};

}  // namespace zolt
