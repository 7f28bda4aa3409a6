#pragma once

#include <QObject>
#include <cstdint>

#include "terminal/EmulationDisplay.h"
#include "terminal/KeyMode.h"
#include "terminal/copying/CopyMotions.h"

namespace zolt {

/// The copy mode: the keys of vi move a cursor through the text and its history, select and copy. Meanwhile the program
/// gets no key, and the view follows the cursor instead of the end of the text. Main thread.
class CopyMode : public QObject, public KeyMode {
  Q_OBJECT

 public:
  enum class Selects : std::uint8_t { Nothing, Characters, Lines, Rectangle };
  enum class FindStep : std::uint8_t { Open, Next, Previous };

  /// The display must outlive the mode.
  explicit CopyMode(EmulationDisplay& display);
  ~CopyMode() override;

  void toggle();
  bool isOn() const { return m_isOn; }
  Selects selects() const { return m_selects; }
  /// Where the cursor is.
  TextPosition cursor() const { return m_cursor; }
  /// Moves the cursor to a place that was found.
  void goTo(TextPosition place);

  void keyPressed(const QKeyEvent& event, bool repeats) override;
  /// Leaves the mode for the end of the text.
  void end() override;

 Q_SIGNALS:
  /// The mode is on or off, selects something else, or its cursor was moved.
  void changed();
  void findWanted(zolt::CopyMode::FindStep step);

 private:
  friend struct CopyKeys;
  void begin();
  void move(CopyMotion motion, int count);
  void moveRows(std::int64_t rows);
  /// By this part of a page, with the view.
  void movePages(double pages);
  void goToRow(CanvasRow row);
  void goToPrompt(bool later, int count);
  void find(bool backward);
  void findAgain(bool reversed);
  void toggleSelection(Selects kind);
  void swapEnds();
  void copy();
  void placeCursor(TextPosition place);
  void showSelection();
  CanvasColumn columnOf(TextPosition place);
  vt::ScrollbackText text() const { return vt::ScrollbackText(m_source.shownText()); }

  EmulationDisplay& m_display;
  TextCanvas& m_canvas;
  EmulationSource& m_source;
  bool m_isOn = false;
  bool m_isAlternate = false;  // the screen that it is on
  Selects m_selects = Selects::Nothing;
  TextPosition m_cursor;
  TextPosition m_origin;  // of what is selected
  CanvasColumn m_column;  // that the cursor keeps to from row to row
  int m_count = 0;        // typed so far
  bool m_findsBackward = false;
};

}  // namespace zolt
