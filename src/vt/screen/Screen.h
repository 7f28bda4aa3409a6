#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/TerminalSize.h"
#include "vt/cells/CellTables.h"
#include "vt/cells/Position.h"
#include "vt/cells/Ranges.h"
#include "vt/history/Scrollback.h"
#include "vt/screen/CharacterSets.h"
#include "vt/screen/Grid.h"

namespace zolt::vt {

/// What the next character will be printed with.
struct Pen {
  Style style;
  LinkTarget link;
  bool isProtected = false;  ///< DECSCA, SPA

  friend bool operator==(const Pen&, const Pen&) = default;
};

/// The cursor, from 0. After a character in the last column it stays there with `wrapsNext` set, and the next character
/// wraps first.
struct Cursor {
  int row = 0;
  int column = 0;
  bool wrapsNext = false;

  Position position() const { return {.row = row, .column = column}; }

  friend bool operator==(const Cursor&, const Cursor&) = default;
};

/// The modes that affect the screen.
struct ScreenModes {
  bool autoWrap = true;              ///< DECAWM
  bool origin = false;               ///< DECOM
  bool insert = false;               ///< IRM
  bool newLine = false;              ///< LNM
  bool leftRightMargins = false;     ///< DECLRMM
  bool reverseWrap = false;          ///< BS wraps back within a wrapped line
  bool extendedReverseWrap = false;  ///< BS wraps back to any previous row
  bool graphemeClusters = false;     ///< a cell holds a cluster (UAX #29), not a character and its wcwidth()
};

/// The kind of protection that an erasing function respects.
enum class Protection : std::uint8_t { None, Iso, Dec };

/// The primary and the alternate grid with their scrollback, cursor, margins and tab stops. Most functions are named
/// after the control functions they implement, whose mnemonics are in the comments; they accept any number, and take
/// time at most linear in the size of the grid. Rows and columns count from 0, and rectangles must lie within the
/// screen. One thread at a time.
class Screen {
 public:
  /// Limits that the constructor and `resize` clamp to.
  static constexpr int maxSide = 10'000;
  static constexpr int maxCells = 4'000'000;

  Screen(const TerminalSize& size, HistorySettings history);

  int rows() const { return m_grid->rows(); }
  int columns() const { return m_grid->columns(); }
  Rectangle area() const { return {.rows = {.begin = 0, .end = rows()}, .columns = {.begin = 0, .end = columns()}}; }
  /// The grid that is shown.
  const Grid& grid() const { return *m_grid; }
  const Grid& grid(bool alternate) const { return m_grids[alternate ? 1 : 0]; }
  Grid::Change takeChange(bool alternate, int row) { return m_grids[alternate ? 1 : 0].takeChange(row); }
  const CellTables& tables() const { return m_tables; }
  const Scrollback& scrollback() const { return m_scrollback; }
  Scrollback& scrollback() { return m_scrollback; }
  const Cursor& cursor() const { return m_cursor; }
  bool showsAlternate() const { return m_grid == &m_grids[1]; }

  ScreenModes modes;
  CharacterSets characterSets;

  const Pen& pen() const { return m_pen; }
  /// The pen's style, for modification.
  Style& style() {
    m_attributesKnown = false;
    return m_pen.style;
  }
  void setProtected(bool isProtected);
  void setLink(LinkTarget link);
  /// The kind that was last used to protect anything (DECSCA or SPA).
  Protection protection = Protection::None;

  // Printing.
  void printAscii(std::string_view text);
  void print(std::u32string_view text);
  void repeat(int count);  // REP
  /// Called for anything other than a printed character: the next one starts a new cluster.
  void endCluster() { m_openCluster = false; }

  // The bulk path: of a flood of output, lines that scroll off before anyone can see them go straight to the
  // scrollback.
  /// Whether the bulk path can be used: the cursor is at the start of an empty bottom row, the whole screen scrolls,
  /// and no mode is set that the bulk path does not handle.
  bool canPrintBulk() const;
  struct BulkResult {
    std::size_t printed = 0;  ///< bytes whose lines are in the scrollback now
    std::size_t scanned = 0;  ///< bytes of complete, plain lines, including those
  };
  /// Moves lines of text and SGR from the start of `bytes` to the scrollback, except the last screenful. The caller
  /// must then print the bytes from `printed` to `scanned`, after which everything is as if all of it had been printed.
  /// Requires `canPrintBulk`. Returns zeros if `bytes` starts with fewer plain lines than fill the screen.
  BulkResult printBulk(std::string_view bytes);

  // The cursor.
  void moveTo(Position position);  // CUP, relative to the margins in origin mode
  void moveToRow(int row);         // VPA
  void moveToColumn(int column);   // CHA
  void moveUp(int count);          // CUU
  void moveDown(int count);        // CUD
  void moveForward(int count);     // CUF
  void moveBack(int count);        // CUB, BS
  void moveRows(int count);        // VPR
  void moveColumns(int count);     // HPR
  void carriageReturn();           // CR
  void lineFeed();                 // LF, IND
  void reverseLineFeed();          // RI
  void backIndex();                // DECBI
  void forwardIndex();             // DECFI
  /// The cursor as programs see it: relative to the margins in origin mode.
  Cursor reportedCursor() const;
  void saveCursor();     // DECSC
  void restoreCursor();  // DECRC

  // Tab stops.
  void tab(int count);      // HT, CHT
  void backTab(int count);  // CBT
  void setTabStop();        // HTS
  void clearTabStop();      // TBC 0
  void clearTabStops();     // TBC 3
  void resetTabStops();     // DECST8C
  const std::vector<bool>& tabStops() const { return m_tabStops; }

  // Margins. At least two rows or columns; ranges that are clipped to fewer are ignored.
  void setVerticalMargins(RowRange rows);          // DECSTBM
  void setHorizontalMargins(ColumnRange columns);  // DECSLRM
  void resetMargins();
  void resetHorizontalMargins();
  const Rectangle& margins() const { return m_margins; }

  // Erasing. Cells with the kind of protection in `kept` are left alone.
  enum class Part : std::uint8_t { ToEnd, ToBegin, All };
  void eraseInDisplay(Part part, Protection kept);  // ED, DECSED
  void eraseInLine(Part part, Protection kept);     // EL, DECSEL
  void eraseCharacters(int count);                  // ECH
  void eraseScrollback() { m_scrollback.clear(); }  // ED 3
  /// Clears the scrollback, and the primary screen but for the line up to the cursor, which becomes the first. For the
  /// user's command: programs have ED.
  void clearButCursorLine();

  // Inserting and deleting.
  void insertCharacters(int count);  // ICH
  void deleteCharacters(int count);  // DCH
  void insertLines(int count);       // IL
  void deleteLines(int count);       // DL
  void insertColumns(int count);     // DECIC
  void deleteColumns(int count);     // DECDC
  void scrollUp(int count);          // SU
  void scrollDown(int count);        // SD
  void scrollLeft(int count);        // SL
  void scrollRight(int count);       // SR

  // Rectangles.
  void fillRectangle(const Rectangle& area, char32_t character);  // DECFRA
  void eraseRectangle(const Rectangle& area, Protection kept);    // DECERA, DECSERA
  void copyRectangle(const Rectangle& area, Position to);         // DECCRA
  template <class Change>
  void changeStyles(const Rectangle& area, bool asStream, Change change);  // DECCARA, DECRARA
  std::uint16_t checksum(const Rectangle& area) const;                     // DECRQCRA
  void alignmentPattern();                                                 // DECALN

  /// Switches to the alternate grid or back. The cursor stays where it is.
  void showAlternate(bool shows);
  /// Clears the alternate grid, shown or not.
  void clearAlternate();

  /// Adds a shell integration mark (OSC 133) at the cursor.
  void addMark(HistoryMarkKind kind, std::int32_t exitStatus);

  /// Changes the size, at least 1 by 1. Lines of the primary grid are rewrapped, and the cursor stays on its character.
  /// The alternate grid is truncated or extended.
  void resize(const TerminalSize& size);
  /// Rows that shrinking the screen pushed past its bottom. They return when it grows again, unless the program changes
  /// the screen first.
  struct RowsBelow {
    std::string text;
    bool continuesLastRow = false;  ///< the first of them continues the line of the screen's last row
  };
  RowsBelow rowsBelow() const;

  /// RIS: as after construction, except that the scrollback is kept.
  void reset();
  /// The main screen with its text, and the cursor at the start of the row below that; all else as after construction.
  void startOver();
  /// DECSTR.
  void softReset();

 private:
  friend struct SavedFields;

  struct Saved {
    Cursor cursor;
    Pen pen;
    CharacterSets characterSets;
    bool origin = false;
  };
  // Screen.cpp
  static TerminalSize clamped(const TerminalSize& size);
  void clearGrid(Grid& grid);
  void resetPen();
  void resetState();
  Cell blank();
  std::uint64_t attributes() { return m_attributesKnown ? m_attributes : resolveAttributes(); }
  std::uint64_t resolveAttributes();
  template <class Table, class Value>
  std::uint32_t internOrSweep(Table& table, const Value& value);
  StyleId styleId(const Style& style);
  LinkId linkId(const LinkTarget& link);
  std::optional<ClusterId> clusterId(const std::u32string& scalars);
  void sweep();
  bool hasFullWidth() const { return m_margins.columns == area().columns; }
  void setCursor(Position position) { m_cursor = {.row = position.row, .column = position.column}; }
  void scrollRegionUp(RowRange rows, int count);
  void scrollRegionDown(RowRange rows, int count);
  void moveWithinMargins(RowRange rows, int by);
  void saveToHistory(int row);
  void clampCursor();

  // ScreenPrint.cpp
  int limit() const { return m_cursor.column < m_margins.columns.end ? m_margins.columns.end : columns(); }
  void wrap();
  void advanceRow();
  void put(char32_t character, Cell::Width width);
  void leaveFiller(Position at);
  void printOne(char32_t character);
  std::size_t printRun(std::u32string_view text);
  bool joins(char32_t character, bool isPlain) const;
  void join(char32_t character);
  std::optional<Cursor> cellBefore() const;
  void widen(const Cursor& at, Cell cell);
  void isolate(int row, ColumnRange columns);

  // ScreenResize.cpp
  struct Tracked;
  struct Line;
  struct Lines;
  void reflow(const TerminalSize& size);
  void resizeAlternate(const TerminalSize& size);
  void takeLine(const HistoryLine& history, Line& line);
  void addScalar(char32_t scalar, std::uint64_t attributes, std::vector<Cell>& cells);
  Cell::Width naturalWidth(Cell cell) const;
  void takeRow(int row, Line& line, std::size_t index, std::span<Tracked> tracked) const;
  void takeFromHistory(std::size_t rows, int columns, Lines& lines);

  // ScreenErase.cpp
  void eraseCells(int row, ColumnRange columns, Protection kept);
  void endLineBefore(int row);
  void shiftCells(int row, ColumnRange columns, int by);

  CellTables m_tables;
  Scrollback m_scrollback;
  std::array<Grid, 2> m_grids;  // primary, alternate
  Grid* m_grid = &m_grids[0];
  Cursor m_cursor;
  std::array<Saved, 2> m_saved;
  Rectangle m_margins;
  std::vector<bool> m_tabStops;

  // A logical line while the screen is resized.
  struct Line {
    std::vector<Cell> cells{};  // without tails and fillers
    std::vector<RowMark> marks{};
    bool continuesPrevious = false;
  };
  std::vector<Line> m_rowsBelow;
  std::vector<const Line*> m_detachedLines;  // in neither grid while the screen is resized

  Pen m_pen;
  // The pen's attributes, and the cell that erasing leaves, which is known only with them; each is looked up when it is
  // needed: a program that colours every cell never asks for the second.
  bool m_attributesKnown = false;
  bool m_blankKnown = false;
  std::uint64_t m_attributes = 0;
  Cell m_blank;
  std::size_t m_refused = 0;  // styles, clusters and links that found no room since the last sweep

  char32_t m_lastPrinted = 0;  // for REP; 0: none
  bool m_openCluster = false;  // the cell before the cursor was printed last, and can still be extended
  bool m_lastIsPlain = true;   // its last scalar never joins what follows
};

template <class Change>
void Screen::changeStyles(const Rectangle& area, bool asStream, Change change) {
  for (int row = area.rows.begin; row < area.rows.end; ++row) {
    const int begin = asStream && row != area.rows.begin ? 0 : area.columns.begin;
    const int end = asStream && row != area.rows.last() ? columns() : area.columns.end;
    const std::span<Cell> cells = m_grid->row(row);
    for (int column = begin; column < end; ++column) {
      Cell& cell = cells[static_cast<std::size_t>(column)];
      Style style = m_tables.styles[cell.style()];
      change(style);
      // An erased cell becomes a space, because it has no style but a background.
      if (cell.isErased()) cell = Cell(U' ', Cell::Width::Narrow, cell.attributes());
      cell = cell.withStyle(styleId(style));
    }
    m_grid->touch({.row = row, .column = end});
  }
}

}  // namespace zolt::vt
