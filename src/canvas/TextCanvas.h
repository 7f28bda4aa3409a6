#pragma once

#include <QAbstractScrollArea>
#include <QTimer>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "base/TerminalSize.h"
#include "canvas/CanvasFonts.h"
#include "canvas/CanvasLabel.h"
#include "canvas/FrameDamage.h"
#include "canvas/FramePacer.h"
#include "canvas/RowSource.h"
#include "canvas/ScrollModel.h"
#include "canvas/Selection.h"
#include "canvas/SizeNotifier.h"
#include "canvas/TextInView.h"

namespace zolt {

class CanvasAnnouncer;
class CanvasInput;
class CanvasMarks;
class LinkLabel;
class RowPainter;
class ThinScrollBar;
struct PointerPlace;

/// A scrolling widget that shows the rows of a row source and lets the user select and copy them.
///
/// A frame costs what is visible, whatever the size of the text, and there is at most one per refresh of the screen.
/// Scrolling moves pixels; only rows that changed are painted. Characters that are new take long to shape: a frame does
/// so for a few milliseconds, and what is missing then follows in the next ones. A picture of the canvas
/// (QWidget::grab) is complete. A view that is hidden after it was shown only takes note of what is new, now and then.
class TextCanvas : public QAbstractScrollArea {
  Q_OBJECT

 public:
  /// Blank space around the text.
  static constexpr LogicalPixels inset{5};

  /// `clock` must outlive the canvas.
  explicit TextCanvas(std::unique_ptr<RowSource> source, QWidget* parent = nullptr, Clock& clock = Clock::steady());
  ~TextCanvas() override;

  /// The terminal size of a canvas of `size`, in logical pixels, on a screen with `scale` device pixels to one of them.
  static TerminalSize gridSizeFor(QSize size, double scale, const CanvasFont& font = {});

  /// What is entered goes to `input`, which must outlive the canvas or be replaced before it goes; null: nowhere.
  void setInput(CanvasInput* input) { m_input = input; }
  /// The font from now on; the size in characters changes with it. The zoom stays.
  void setTextFont(const CanvasFont& font);
  /// The font as it is shown, zoomed.
  const CanvasFont& textFont() const { return m_fonts->font(); }
  /// The range of a zoomed font's size, ends included.
  static constexpr LogicalPixels smallestZoom{6};
  static constexpr LogicalPixels largestZoom{96};
  /// Make the font a logical pixel larger or smaller than it is, or as large as it was set.
  Q_INVOKABLE void zoomIn() { zoomBy(1); }
  Q_INVOKABLE void zoomOut() { zoomBy(-1); }
  Q_INVOKABLE void resetZoom();
  /// How much larger than it was set the font is, in logical pixels; negative: smaller.
  double zoom() const { return m_zoom; }
  void setZoom(double zoom);
  /// The colours from now on. A background that is not opaque needs a window with an alpha channel.
  void setColors(const CanvasColors& colors);
  const CanvasColors& colors() const { return m_colors; }
  /// Whether the pointer is followed while no button is held: for links, and for programs that ask for its motion.
  void setPointerFollowed(bool followed);
  /// How long a new size must hold before it is announced.
  void setSizeRest(std::chrono::milliseconds rest) { m_sizeNotifier.setRest(rest); }
  /// Whether the view is a little fainter than usual, because the user works elsewhere.
  void setDimmed(bool dimmed);
  /// A brief, mild change of the whole view: a bell that is seen.
  void flash();

  RowSource& source() { return *m_source; }
  TerminalSize gridSize() const { return m_gridSize; }
  const CellMetrics& cellMetrics() const { return m_fonts->metrics(); }

  /// To be called when the source has more to show.
  void contentChanged();
  /// The same, from the event loop and not from within a call of the canvas: the frame is made within the call if none
  /// was made just before, or if it is the first in a new size.
  void showChange();
  /// Shows the end of the text from now on, until the user scrolls away from it.
  void scrollToEndOfDocument();
  bool isAtEnd() const { return m_atEnd; }
  /// The distance from the top of the text to the top of the view, and its maximum.
  DevicePixels scrollOffset();
  DevicePixels scrollMaximum();
  /// How far a page is: the whole rows of the view but one.
  DevicePixels pageHeight() const;
  void scrollTo(DevicePixels offset);
  /// Scrolls, as far as the text goes, so that the row of `position` is the first in view.
  void scrollToTop(TextPosition position);

  /// How many rows the current frame has.
  std::size_t rowsInFrame() const { return m_rows.size(); }
  /// Makes the frame that is due now instead of at the next refresh.
  void makeFrameNow();

  /// Paints the marks of `marks`, or none. It must outlive the canvas or be replaced before it goes.
  void setMarks(CanvasMarks* marks);
  /// To be called when the marks have changed.
  void marksChanged();
  /// Shows the places of these ranges in the scroll bar.
  void markScrollBar(const std::vector<TextRange>& ranges);
  /// Scrolls, if need be, so that `range` is in view below the topmost `covered` of the view, with some context around
  /// it.
  void reveal(TextRange range, LogicalPixels covered);
  /// The text in view.
  TextRange rangeInView();
  /// Where the rows of the frame begin.
  TextPosition firstInView() const { return m_rows.empty() ? TextPosition() : m_rows.front()->range.begin; }

  /// Shows a cursor of the user's own on the character at `place` instead of the program's; none: the program's. It
  /// stays there until it is set again.
  void setCaret(std::optional<TextPosition> place);
  /// Scrolls as little as is needed to have the row of `place` in view.
  void scrollIntoView(TextPosition place);
  /// The first and the last row that is wholly in view.
  struct WholeRows {
    CanvasRow first;
    CanvasRow last;
  };
  WholeRows wholeRowsInView();
  /// Selects without making the selection known to others.
  void setSelection(const Selection& selection);

  /// While held, the view stays where it is in the text, whatever is printed, until the user scrolls, and it never
  /// follows the end. Afterwards it does if it did before, unless the user has scrolled.
  void holdView(bool held);
  /// Shows labels over the text, none of them on a part of another's. They follow the text that they are on.
  void setLabels(std::vector<CanvasLabel> labels);
  /// Where they are now, in the order in which they were set.
  const std::vector<CanvasLabel>& labels() const { return m_labels; }

  const Selection& selection() const { return m_selection; }
  void select(TextRange range);
  void clearSelection();
  QString selectedText() const;
  QString textOf(TextRange range) const;
  /// The text of a range as a person copies it.
  QString copiedText(TextRange range) const;
  /// Whether some of the text that is there now is selected.
  bool canCopy() const;
  Q_INVOKABLE void copy();
  Q_INVOKABLE void selectAll();
  Q_INVOKABLE void paste();
  /// Pastes what is selected, in this program or another; the clipboard where the platform has no such selection.
  void pasteSelection();

  /// While held, a new size is not announced; for changes in steps that are one change to the user.
  void holdGridSize(bool held) { m_sizeNotifier.hold(held); }

  /// The position nearest to a point of the viewport, in logical pixels.
  TextPosition positionAt(QPointF point);
  /// The row of the frame at a point of the viewport, and the character there: the row's end to the right of its text,
  /// the text's end below it. None for a point outside, or without a frame.
  std::optional<RowPlace> characterAt(QPointF point) const;

  /// The rows of the frame as text, with an LF between two rows.
  QString visibleText() const { return textInView().text(); }
  TextInView textInView() const;
  /// The offset of the cursor in `view`, the text in view; the nearest end if it is not in view, and the text's end if
  /// there is none.
  int caretIn(const TextInView& view) const;
  /// The parts of `view` that are selected, in order: one, or one for each row of a rectangle. None is empty.
  std::vector<OffsetRange> selectionIn(const TextInView& view) const;

  /// The rectangle of a character, in logical pixels of the viewport; empty when it is not in the current frame.
  QRectF rectOf(TextPosition position);
  /// The same for some columns of a row of the frame.
  QRectF rectOf(std::size_t row, ColumnRange columns) const;

 Q_SIGNALS:
  /// The size of the text area: soon after the widget is first shown, then whenever a new one has come to rest.
  void gridSizeChanged(const zolt::TerminalSize& size);
  /// A frame with other rows than the one before was made.
  void frameChanged();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
  bool focusNextPrevChild(bool next) override;

 private:
  void addActions();
  void zoomBy(double step);
  void useFont();
  void updateScale();
  void updateGridSize();
  void makeFrame();
  void syncUnseen();
  void layOut();
  void sync();
  TextRange selectedOnScreen();
  RowKey keyOf(CanvasRow number, const RowContent& row) const;
  ColumnRange selectedColumns(const RowContent& row) const;
  std::optional<CanvasCursor> cursorIn(CanvasRow row) const;
  void updateBlinking();
  void updateScrollBar();
  ScrollModel scrollModel() const;
  DevicePixels offsetNow();
  void setOffset(DevicePixels offset);
  DevicePixels toDevice(LogicalPixels length) const;
  /// Of the viewport.
  DevicePixels deviceHeight() const;
  /// The logical pixels of a rectangle given in device pixels.
  QRectF toLogical(DevicePoint topLeft, DevicePixels width, DevicePixels height) const;
  void updateRows(const std::vector<std::size_t>& rows);
  void paintRow(RowPainter& painter, std::size_t row);
  void finishRows();
  void paintMarks(RowPainter& painter, std::size_t row);
  std::vector<RowLabel> labelsIn(const RowContent& row) const;
  void paintLabels(RowPainter& painter, std::size_t row);
  std::optional<CanvasCursor> cursorShown();
  void paintPreedit(QPainter& painter);
  void selectionChanged();
  SelectionEnd selectableUnit(QPointF point, SelectionUnit unit);
  QString rectangleText(TextRange range) const;
  CanvasRow firstScreenRow() const;
  PointerPlace placeOf(QPointF point);
  bool isUsedByProgram(const QMouseEvent& event);
  void followLink(QPointF point, Qt::KeyboardModifiers modifiers);
  void forgetLink();
  void beginSelection(QPointF point, SelectionUnit unit);
  void extendSelection(QPointF point);
  bool canExtendSelection() const;
  void pasteFrom(int clipboardMode);

  std::unique_ptr<RowSource> m_source;
  CanvasFont m_font;  // not zoomed
  double m_zoom = 0;  // logical pixels more
  std::unique_ptr<CanvasFonts> m_fonts;
  Clock& m_clock;
  FramePacer m_pacer;
  ThinScrollBar* m_bar;  // a child
  TerminalSize m_gridSize;
  int m_framesAtOnce = 0;  // still to come: until the source's screen is of that size
  SizeNotifier m_sizeNotifier;

  // Where the view is: at the end, or `m_anchorDelta` below the top of the row that shows `m_anchor`.
  bool m_atEnd = true;
  bool m_isHeld = false;
  bool m_wasAtEnd = false;  // when the view was held, and the user has not scrolled since
  TextPosition m_anchor;
  DevicePixels m_anchorDelta;

  CanvasColors m_colors;
  Frame m_frame;
  std::vector<std::shared_ptr<const RowContent>> m_rows;  // of m_frame
  CanvasRow m_firstRow;                                   // of them
  std::optional<CanvasCursor> m_cursor;                   // at the last frame
  bool m_frameValid = false;
  bool m_updatingBar = false;

  CanvasInput* m_input = nullptr;
  CanvasMarks* m_marks = nullptr;
  std::vector<CanvasLabel> m_labels;
  std::optional<TextPosition> m_caret;

  Selection m_selection;
  bool m_selectionStarted = false;   // there is an origin that a click with Shift can extend from
  std::optional<QPointF> m_pointer;  // while a selection is being dragged
  int m_autoScrollTimer = 0;
  qint64 m_doubleClickTime = -1;
  QPointF m_doubleClickPoint;
  QTimer m_refineTimer;
  QTimer m_blinkTimer;
  bool m_blinkedAway = false;
  bool m_isDimmed = false;
  bool m_isUnseen = false;  // hidden, after it was shown
  QTimer m_flashTimer;
  std::unique_ptr<Timer> m_finishTimer;  // runs while a row in view is unfinished
  QString m_preedit;
  std::optional<CanvasLink> m_link;  // under the pointer
  QPointF m_hoveredAt;
  LinkLabel* m_linkLabel = nullptr;  // a child, made when first needed
  std::unique_ptr<CanvasAnnouncer> m_announcer;
};

}  // namespace zolt
