#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vt/CellTables.h"
#include "vt/CharacterSets.h"
#include "vt/Grid.h"
#include "vt/Scrollback.h"

namespace zolt::vt {

/// How the next character will look, and whether it will be protected (DECSCA, SPA).
struct Pen {
  Style style;
  LinkTarget link;
  bool isProtected = false;

  friend bool operator==(const Pen&, const Pen&) = default;
};

/// A place of the grid, from 0. After a character in the last column the cursor stays there, and `wrapsNext`.
struct Cursor {
  int row = 0;
  int column = 0;
  bool wrapsNext = false;

  friend bool operator==(const Cursor&, const Cursor&) = default;
};

/// The modes that the screen itself obeys.
struct ScreenModes {
  bool autoWrap = true;              ///< DECAWM
  bool origin = false;               ///< DECOM
  bool insert = false;               ///< IRM
  bool newLine = false;              ///< LNM
  bool leftRightMargins = false;     ///< DECLRMM
  bool reverseWrap = false;          ///< back over the edge of a line that was wrapped
  bool extendedReverseWrap = false;  ///< and of any
  bool graphemeClusters = false;     ///< characters are those of UAX #29, not of wcwidth()
};

/// Which kind of protected cell an erasing function leaves alone.
enum class Protection : std::uint8_t { None, Iso, Dec };

/// A part of the screen, ends not included, clipped to it.
struct Rectangle {
  int top = 0;
  int left = 0;
  int bottom = 0;
  int right = 0;

  bool isEmpty() const { return top >= bottom || left >= right; }
};

/// What a terminal shows: two grids, the cursor, margins, tab stops and what scrolled off. Its functions are those that
/// control sequences call, with ECMA-48's names in the comments; they take any number, and do no more work than the
/// grid is large. Rows and columns count from 0, ends are not included. One thread at a time.
class Screen {
 public:
  /// What a grid may have at most; `resize` and the constructor hold to it.
  static constexpr int maxSide = 10'000;
  static constexpr int maxCells = 4'000'000;

  Screen(int rows, int columns, HistorySettings history);

  int rows() const { return m_grid->rows(); }
  int columns() const { return m_grid->columns(); }
  const Grid& grid() const { return *m_grid; }
  const CellTables& tables() const { return m_tables; }
  const Scrollback& scrollback() const { return m_scrollback; }
  Scrollback& scrollback() { return m_scrollback; }
  const Cursor& cursor() const { return m_cursor; }
  bool showsAlternate() const { return m_grid == &m_grids[1]; }

  ScreenModes modes;
  CharacterSets characterSets;

  const Pen& pen() const { return m_pen; }
  /// The pen's style, to be changed where it is.
  Style& style() {
    m_penIsKnown = false;
    return m_pen.style;
  }
  void setProtected(bool isProtected);
  void setLink(LinkTarget link);
  /// Which protection DECSCA or SPA put in force.
  Protection protection = Protection::None;

  // Printing.
  void printAscii(std::string_view text);
  void print(std::u32string_view text);
  void repeat(int count);  // REP
  /// Something else than a character came: the next one joins nothing.
  void endCluster() { m_openCluster = false; }

  /// Whether what comes is the beginning of a line at the bottom of a screen that scrolls as a whole.
  bool isAtNewLine() const;
  /// What `printLines` has done.
  struct Rush {
    std::size_t printed = 0;  ///< bytes that are history now
    std::size_t seen = 0;     ///< bytes that it looked at: up to here all was usual, and ends with a line
  };
  /// Where `isAtNewLine`: takes whole lines of text and SGR from the beginning of `bytes` that will have scrolled off
  /// when all that it has seen is printed, and makes them history without having been on the screen. It makes no
  /// difference, once the rest of what it has seen has been printed, but to the time it takes.
  Rush printLines(std::string_view bytes);

  // The cursor.
  void moveTo(int row, int column);  // CUP, by the margins in origin mode
  void moveToRow(int row);           // VPA
  void moveToColumn(int column);     // CHA
  void moveUp(int count);            // CUU
  void moveDown(int count);          // CUD
  void moveForward(int count);       // CUF
  void moveBack(int count);          // CUB, BS
  void moveRows(int count);          // VPR
  void moveColumns(int count);       // HPR
  void carriageReturn();             // CR
  void lineFeed();                   // LF, IND
  void reverseLineFeed();            // RI
  void backIndex();                  // DECBI
  void forwardIndex();               // DECFI
  /// The cursor as it is told to programs: by the margins in origin mode.
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

  // Margins.
  void setVerticalMargins(int top, int bottom);    // DECSTBM
  void setHorizontalMargins(int left, int right);  // DECSLRM
  void resetMargins();
  void resetHorizontalMargins();
  Rectangle margins() const { return {m_top, m_left, m_bottom, m_right}; }

  // Erasing. What is protected as `kept` says stays.
  enum class Part : std::uint8_t { ToEnd, ToBegin, All };
  void eraseInDisplay(Part part, Protection kept);  // ED, DECSED
  void eraseInLine(Part part, Protection kept);     // EL, DECSEL
  void eraseCharacters(int count);                  // ECH
  void eraseScrollback() { m_scrollback.clear(); }  // ED 3

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
  void fillRectangle(const Rectangle& area, char32_t character);   // DECFRA
  void eraseRectangle(const Rectangle& area, Protection kept);     // DECERA, DECSERA
  void copyRectangle(const Rectangle& area, int row, int column);  // DECCRA
  template <class Change>
  void changeStyles(const Rectangle& area, bool asStream, Change change);  // DECCARA, DECRARA
  std::uint16_t checksum(const Rectangle& area) const;                     // DECRQCRA
  void alignmentPattern();                                                 // DECALN

  /// Shows the alternate grid or the primary one. The cursor stays where it is.
  void showAlternate(bool shows);
  /// Clears the alternate grid, which is shown or not.
  void clearAlternate();

  /// A mark of the shell's integration at the cursor.
  void addMark(HistoryMarkKind kind, std::int32_t exitStatus);

  /// Another size, at least 1 by 1. The primary grid's lines are wrapped anew and stay whole; the cursor stays with its
  /// character. The alternate grid is cut or grows.
  void resize(int rows, int columns);
  /// What a smaller screen had no room for below the cursor is kept for the next size, until the program changes what
  /// is shown: then it is as it has drawn it. Its text: what stands in the row after the last, and whether it goes on
  /// with that one.
  struct CutRows {
    std::string text;
    bool goesOn = false;
  };
  CutRows cutRows() const;

  /// As after construction; the scrollback stays.
  void reset();
  /// What DECSTR resets here.
  void softReset();

 private:
  struct Saved {
    Cursor cursor;
    Pen pen;
    CharacterSets characterSets;
    bool origin = false;
  };
  // Screen.cpp
  Cell blank();
  std::uint64_t look() { return m_penIsKnown ? m_look : newLook(); }
  std::uint64_t newLook();
  template <class Table, class Value>
  std::uint32_t named(Table& table, const Value& value);
  StyleId styleId(const Style& style);
  LinkId linkId(const LinkTarget& link);
  std::optional<ClusterId> clusterId(const std::u32string& scalars);
  void sweep();
  int top() const { return modes.origin ? m_top : 0; }
  bool isWithinMargins(int column) const { return column >= m_left && column < m_right; }
  bool hasFullWidth() const { return m_left == 0 && m_right == columns(); }
  void place(int row, int column) { m_cursor = {.row = row, .column = column}; }
  void scrollRegionUp(int top, int bottom, int count);
  void scrollRegionDown(int top, int bottom, int count);
  void moveWithinMargins(int top, int bottom, int by);
  void keepRow(int row);
  void clampCursor();

  // ScreenPrint.cpp
  int limit() const { return m_cursor.column < m_right ? m_right : columns(); }
  void wrap();
  void advanceRow();
  void put(char32_t character, int width);
  void leaveOut(int row, int column);
  void printOne(char32_t character);
  std::size_t printRun(std::u32string_view text);
  bool joins(char32_t character, bool isPlain) const;
  void join(char32_t character);
  std::optional<Cursor> cellBefore() const;
  void widen(const Cursor& at, Cell cell);
  void isolate(int row, int begin, int end);

  // ScreenResize.cpp
  struct Tracked;
  struct Line;
  struct Lines;
  void reflow(int rows, int columns);
  void resizeAlternate(int rows, int columns);
  void takeLine(const HistoryLine& history, Line& line);
  void addScalar(char32_t scalar, std::uint64_t look, std::vector<Cell>& cells);
  Cell::Width naturalWidth(Cell cell) const;
  void takeRow(int row, Line& line, std::size_t index, std::span<Tracked> tracked) const;
  void takeFromHistory(std::size_t rows, int columns, Lines& lines);

  // ScreenErase.cpp
  void eraseCells(int row, int begin, int end, Protection kept);
  void endLineBefore(int row);
  void shiftCells(int row, int begin, int end, int by);

  CellTables m_tables;
  Scrollback m_scrollback;
  std::array<Grid, 2> m_grids;  // primary, alternate
  Grid* m_grid = &m_grids[0];
  Cursor m_cursor;
  std::array<Saved, 2> m_saved;
  int m_top = 0;
  int m_bottom = 0;
  int m_left = 0;
  int m_right = 0;
  std::vector<bool> m_tabStops;

  struct Line {
    std::vector<Cell> cells{};  // without tails and fillers
    std::vector<RowMark> marks{};
    bool goesOn = false;  // with the line before, which was cut here
  };
  std::vector<Line> m_cut;
  std::vector<const Line*> m_linesInHand;  // while they are in no grid

  Pen m_pen;
  // The pen's style and link by number, and the look that blanks take from it; made when they are asked for.
  bool m_penIsKnown = false;
  std::uint64_t m_look = 0;
  Cell m_blank;
  std::size_t m_refused = 0;  // styles, clusters and links since the last sweep

  char32_t m_lastPrinted = 0;  // for REP; 0: none
  bool m_openCluster = false;  // the cell before the cursor was printed last, and may be added to
  bool m_lastIsPlain = true;   // its last scalar joins nothing that follows
};

template <class Change>
void Screen::changeStyles(const Rectangle& area, bool asStream, Change change) {
  for (int row = area.top; row < area.bottom; ++row) {
    const int begin = asStream && row != area.top ? 0 : area.left;
    const int end = asStream && row != area.bottom - 1 ? columns() : area.right;
    const std::span<Cell> cells = m_grid->row(row);
    for (int column = begin; column < end; ++column) {
      Cell& cell = cells[static_cast<std::size_t>(column)];
      Style style = m_tables.styles[cell.style()];
      change(style);
      // A place where nothing was written takes no look but from a character.
      if (cell.isErased()) cell = Cell(U' ', Cell::Width::Narrow, cell.look());
      cell = cell.withStyle(styleId(style));
    }
    m_grid->touch(row, end);
  }
}

}  // namespace zolt::vt
