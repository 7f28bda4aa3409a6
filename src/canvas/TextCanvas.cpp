#include "canvas/TextCanvas.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "canvas/CanvasAccessible.h"
#include "canvas/CanvasAnnouncer.h"
#include "canvas/CanvasInput.h"
#include "canvas/CanvasMarks.h"
#include "controls/CommandKey.h"
#include "controls/ThinScrollBar.h"

namespace zolt {

namespace {

// Fetching rows can correct estimates, which moves rows. Each round touches few blocks, so a few rounds are enough.
constexpr int kLayoutRounds = 16;
constexpr std::chrono::milliseconds kRefineInterval{5};
// After a change of size. The screen may follow only in the second: one was on its way. But it may also stay as it is.
constexpr int kFramesAtOnce = 3;
constexpr double kUsualRefreshRate = 60;  // hertz
// How often a view that is hidden takes note of what is new.
constexpr std::chrono::milliseconds kUnseenInterval{250};

// The characters that fit a viewport of `size` logical pixels: at least one. The pixels are theirs, without the strips
// that are too narrow for another one: a change of those few is no change for a program.
TerminalSize gridSizeIn(QSize size, const CanvasFonts& fonts) {
  const CellMetrics& cell = fonts.metrics();
  const auto room = [&](int length) {
    return DevicePixels(std::llround(length * fonts.scale()) -
                        2 * std::llround(TextCanvas::inset.value * fonts.scale()));
  };
  const auto columns = static_cast<int>(std::max(room(size.width()), cell.width) / cell.width);
  const auto rows = static_cast<int>(std::max(room(size.height()), cell.height) / cell.height);
  return {.rows = rows,
          .columns = columns,
          .pixelWidth = (cell.width * columns).toInt(),
          .pixelHeight = (cell.height * rows).toInt()};
}

// A font that is set to a size out of the zoom's range is shown so until it is zoomed.
CanvasFont zoomed(CanvasFont font, double zoom) {
  if (zoom != 0)
    font.size = std::clamp(font.size + zoom, TextCanvas::smallestZoom.value, TextCanvas::largestZoom.value);
  return font;
}

}  // namespace

TextCanvas::TextCanvas(std::unique_ptr<RowSource> source, QWidget* parent, Clock& clock)
    : QAbstractScrollArea(parent),
      m_source(std::move(source)),
      m_fonts(std::make_unique<CanvasFonts>(CanvasFont(), 1)),
      m_clock(clock),
      m_pacer([this] { m_isUnseen ? syncUnseen() : makeFrame(); }, clock),
      m_bar(new ThinScrollBar(ThinScrollBar::Ground::Terminal, this)),
      m_sizeNotifier([this](const TerminalSize& size) { Q_EMIT gridSizeChanged(size); }, clock) {
  static const bool accessible = (CanvasAccessible::install(), true);
  Q_UNUSED(accessible)
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setVerticalScrollBar(m_bar);
  setFocusPolicy(Qt::StrongFocus);  // a click takes the keyboard, and then starts a selection
  setAttribute(Qt::WA_InputMethodEnabled);
  setColors(m_colors);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setCursor(Qt::IBeamCursor);
  addActions();
  m_refineTimer.setInterval(kRefineInterval);
  connect(&m_refineTimer, &QTimer::timeout, this, [this] {
    const std::uint64_t before = m_source->generation();
    if (!m_source->refine()) m_refineTimer.stop();
    if (m_source->generation() != before) m_pacer.request();
  });
  connect(&m_blinkTimer, &QTimer::timeout, this, [this] {
    m_blinkedAway = !m_blinkedAway;
    m_pacer.request();
  });
  m_flashTimer.setSingleShot(true);
  connect(&m_flashTimer, &QTimer::timeout, viewport(), qOverload<>(&QWidget::update));
  m_finishTimer = clock.makeTimer([this] { finishRows(); });
  m_announcer = std::make_unique<CanvasAnnouncer>(*this, clock);
  connect(this, &TextCanvas::frameChanged, this, [this] { m_announcer->frameChanged(); });
}

TextCanvas::~TextCanvas() = default;

void TextCanvas::setColors(const CanvasColors& colors) {
  m_colors = colors;
  QPalette own;
  own.setColor(QPalette::Window, QColor::fromRgba(colors.background));
  own.setColor(QPalette::Base, QColor::fromRgba(colors.background));
  own.setColor(QPalette::Text, QColor::fromRgba(colors.text));
  setPalette(own);
  viewport()->setPalette(own);
  m_bar->setTerminalColors(QColor::fromRgba(colors.background), QColor::fromRgba(colors.text));
  m_frameValid = false;
  viewport()->update();
}

void TextCanvas::setTextFont(const CanvasFont& font) {
  m_font = font;
  useFont();
}

void TextCanvas::useFont() {
  const CanvasFont font = zoomed(m_font, m_zoom);
  if (font == m_fonts->font()) return;
  m_fonts = std::make_unique<CanvasFonts>(font, m_fonts->scale());
  updateGridSize();
}

void TextCanvas::zoomBy(double step) {
  const double size = m_fonts->font().size;
  const double wanted = std::clamp(size + step, smallestZoom.value, largestZoom.value);
  // Out of the range a step can lead only towards it.
  if ((wanted - size) * step <= 0) return;
  m_zoom = wanted - m_font.size;
  useFont();
}

void TextCanvas::setZoom(double zoom) {
  m_zoom = zoom;
  useFont();
}

void TextCanvas::resetZoom() {
  setZoom(0);
}

void TextCanvas::addActions() {
  // The shortcuts are shown here and belong to the window's menus: two owners would make them ambiguous.
  const auto add = [this](const QString& text, Qt::Key key, auto slot) {
    const QString shortcut = commandShortcuts(key).front().toString(QKeySequence::NativeText);
    auto* action = new QAction(text + QLatin1Char('\t') + shortcut, this);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
  };
  add(tr("Copy"), Qt::Key_C, &TextCanvas::copy);
  add(tr("Paste"), Qt::Key_V, &TextCanvas::paste);
  add(tr("Select All"), Qt::Key_A, &TextCanvas::selectAll);
}

DevicePixels TextCanvas::toDevice(LogicalPixels length) const {
  return DevicePixels(std::llround(length.value * m_fonts->scale()));
}

QRectF TextCanvas::toLogical(DevicePoint topLeft, DevicePixels width, DevicePixels height) const {
  const double scale = m_fonts->scale();
  return {topLeft.x.toDouble() / scale, topLeft.y.toDouble() / scale, width.toDouble() / scale,
          height.toDouble() / scale};
}

DevicePixels TextCanvas::deviceHeight() const {
  return toDevice(LogicalPixels(viewport()->height()));
}

void TextCanvas::contentChanged() {
  m_pacer.request();
}

void TextCanvas::showChange() {
  if (m_framesAtOnce > 0 && !m_isUnseen) {
    --m_framesAtOnce;
    makeFrameNow();
  } else {
    m_pacer.requestAtOnce();
  }
}

void TextCanvas::scrollToEndOfDocument() {
  if (m_atEnd || m_isHeld) return;  // a frame now would keep the next one waiting
  m_atEnd = true;
  m_pacer.request();
}

ScrollModel TextCanvas::scrollModel() const {
  const DevicePixels row = m_fonts->metrics().height;
  DevicePixels height = m_source->rowCount() * row + 2 * toDevice(inset);
  // Below a screen that does not fill the view the view is blank; it shows no part of a row above the screen.
  const DevicePixels screen = m_source->screenRows() * row + 2 * toDevice(inset);
  if (m_source->screenRows() > 0) height = height + std::max(deviceHeight() - screen, DevicePixels(0));
  return {.contentHeight = height, .viewportHeight = deviceHeight()};
}

// The part of the selection that a program can still rewrite.
TextRange TextCanvas::selectedOnScreen() {
  if (m_source->screenRows() == 0 || m_selection.empty()) return {};
  const TextPosition first = m_source->rowRange(firstScreenRow()).begin;
  const TextPosition end = m_source->rowRange(CanvasRow(m_source->rowCount() - 1)).end;
  const TextRange selected = m_selection.range();
  return {.begin = std::max(selected.begin, first), .end = std::max(std::min(selected.end, end), first)};
}

// Takes in what has changed, and takes the places that are held along. A selection whose text a program has rewritten
// is one no more: it would mark, and copy, what nobody has selected.
void TextCanvas::sync() {
  const auto textIn = [this](TextRange part) { return m_selection.isRectangle() ? rectangleText(part) : textOf(part); };
  TextRange rewritable = selectedOnScreen();
  const QString before = rewritable.empty() ? QString() : textIn(rewritable);
  m_source->sync();
  const auto moved = [this](TextPosition position) { return m_source->moved(position); };
  m_anchor = moved(m_anchor);
  m_selection.move(moved);
  for (CanvasLabel& label : m_labels) {
    label.on = {.begin = moved(label.on.begin), .end = moved(label.on.end)};
  }
  if (rewritable.empty() || m_pointer) return;  // who is still selecting sees what
  rewritable = {.begin = moved(rewritable.begin), .end = moved(rewritable.end)};
  if (rewritable.begin < m_source->begin()) return;  // another text has taken its place, and may go again
  const QString after = textIn(rewritable);
  // The history may have been trimmed in the middle of it.
  const bool isTrimmed = rewritable.begin == m_source->begin() && before.endsWith(after);
  if (after == before || isTrimmed) return;
  m_selection.clear();
  m_selectionStarted = false;
}

DevicePixels TextCanvas::offsetNow() {
  const ScrollModel model = scrollModel();
  if (m_atEnd) return model.maximum();
  return model.clamped(m_fonts->metrics().topOf(m_source->rowAt(m_anchor)) + m_anchorDelta);
}

DevicePixels TextCanvas::scrollOffset() {
  sync();
  return offsetNow();
}

DevicePixels TextCanvas::scrollMaximum() {
  sync();
  return scrollModel().maximum();
}

DevicePixels TextCanvas::pageHeight() const {
  const DevicePixels row = m_fonts->metrics().height;
  return std::max((deviceHeight() / row - 1) * row, row);
}

void TextCanvas::setOffset(DevicePixels offset) {
  const ScrollModel model = scrollModel();
  offset = model.clamped(offset);
  m_atEnd = !m_isHeld && offset == model.maximum();
  const CanvasRow row(std::min(offset / m_fonts->metrics().height, m_source->rowCount() - 1));
  m_anchor = m_source->rowRange(row).begin;
  m_anchorDelta = offset - m_fonts->metrics().topOf(row);
}

void TextCanvas::scrollTo(DevicePixels offset) {
  sync();
  setOffset(offset);
  m_wasAtEnd = false;
  m_bar->flash();
  m_pacer.request();
}

void TextCanvas::scrollToTop(TextPosition position) {
  sync();
  // Without the blank space above the text: a strip of the row before would be in it.
  const CanvasRow row = m_source->rowAt(position);
  scrollTo(row == CanvasRow(0) ? DevicePixels(0) : m_fonts->metrics().topOf(row) + toDevice(inset));
}

void TextCanvas::scrollContentsBy(int, int) {
  // The bar's value has changed: the user moved it, or updateScrollBar set it to what the view shows already.
  if (!m_updatingBar) scrollTo(scrollModel().offsetFor(m_bar->value()));
}

void TextCanvas::updateScrollBar() {
  const ScrollModel model = scrollModel();
  m_updatingBar = true;
  m_bar->setRange(0, model.barMaximum());
  m_bar->setPageStep(model.barPageStep());
  m_bar->setSingleStep(static_cast<int>(std::max<std::int64_t>(m_fonts->metrics().height / model.pixelsPerStep(), 1)));
  if (!m_bar->isSliderDown()) m_bar->setValue(model.barValue(offsetNow()));
  m_updatingBar = false;
}

void TextCanvas::makeFrameNow() {
  makeFrame();
}

// Nobody looks: what is new is taken note of, and laid out when the view is shown.
void TextCanvas::syncUnseen() {
  sync();
  m_frameValid = false;
}

// Finds the rows in view, as the source now has them, into m_frame and m_rows.
void TextCanvas::layOut() {
  const CellMetrics& cell = m_fonts->metrics();
  const DevicePixels viewportHeight = deviceHeight();
  sync();
  if (m_source->columns() == m_gridSize.columns && m_source->screenRows() == m_gridSize.rows) m_framesAtOnce = 0;
  m_cursor = cursorShown();
  for (int round = 0; round < kLayoutRounds; ++round) {
    const std::uint64_t generation = m_source->generation();
    const DevicePixels top = offsetNow() - toDevice(inset);
    const DevicePixels bottom = top + viewportHeight - DevicePixels(1);
    CanvasRow first(std::max(top, DevicePixels(0)) / cell.height);
    // Above a screen that is shown from its first row on is blank space, not a strip of the history.
    if (m_atEnd && first + 1 == firstScreenRow()) ++first;
    if (m_isHeld && m_anchorDelta <= DevicePixels(0)) first = std::max(first, m_source->rowAt(m_anchor));
    const CanvasRow last(std::min(bottom / cell.height, m_source->rowCount() - 1));
    m_rows.clear();
    m_frame.rows.clear();
    m_firstRow = first;
    m_frame.rowHeight = cell.height;
    m_frame.firstRowTop = cell.topOf(first) - top;
    for (CanvasRow row = first; row <= last; ++row) {
      m_rows.push_back(m_source->content(row));
      m_frame.rows.push_back(keyOf(row, *m_rows.back()));
    }
    if (m_source->generation() == generation) break;
  }
}

ColumnRange TextCanvas::selectedColumns(const RowContent& row) const {
  const TextRange range = m_selection.range();
  if (!m_selection.isRectangle()) return row.columnsOf(range);
  const bool isAcross = !m_selection.empty() && row.range.end >= range.begin && row.range.begin <= range.end;
  return isAcross ? m_selection.columns() : ColumnRange();
}

// The cursor, if it is seen in this row just now: as an outline where the keyboard is elsewhere.
std::optional<CanvasCursor> TextCanvas::cursorIn(CanvasRow row) const {
  if (!m_cursor || m_cursor->row != row || !m_cursor->isShown || !m_preedit.isEmpty()) return std::nullopt;
  CanvasCursor cursor = *m_cursor;
  cursor.row = {};
  if (!hasFocus()) {
    cursor.look = CursorLook::HollowBlock;
  } else if (cursor.blinks && m_blinkedAway) {
    return std::nullopt;
  }
  return cursor;
}

RowKey TextCanvas::keyOf(CanvasRow number, const RowContent& row) const {
  RowKey key{.content = row.stamp,
             .selected = selectedColumns(row),
             .cursor = cursorIn(number),
             .link = m_link ? row.columnsOf(m_link->range) : ColumnRange(),
             .labels = labelsIn(row),
             .isBlinkedAway = row.blinks && m_blinkedAway};
  if (m_marks == nullptr) return key;
  const RowMarks marks = m_marks->marksIn(row.range);
  std::ranges::transform(marks.found, std::back_inserter(key.found),
                         [&](TextRange found) { return row.columnsOf(found); });
  key.current = row.columnsOf(marks.current);
  return key;
}

void TextCanvas::makeFrame() {
  const Frame before = std::exchange(m_frame, {});
  const bool comparable = std::exchange(m_frameValid, true);
  const std::optional<CanvasCursor> cursorBefore = m_cursor;
  layOut();
  updateScrollBar();
  if (m_cursor != cursorBefore) updateMicroFocus(Qt::ImCursorRectangle);  // where an input method shows its choices
  // A cursor that moves is seen.
  if (m_blinkedAway && m_cursor != cursorBefore) {
    m_blinkedAway = false;
    m_blinkTimer.start();
    layOut();
  }
  updateBlinking();
  if (!m_refineTimer.isActive()) m_refineTimer.start();
  const FrameDamage damage = compareFrames(before, m_frame, deviceHeight());
  const bool changes = damage.everything || damage.shift != DevicePixels(0) || !damage.dirtyRows.empty();
  if (m_link && changes) followLink(m_hoveredAt, QApplication::keyboardModifiers());  // another text is there now
  const double logicalShift = damage.shift.toDouble() / m_fonts->scale();
  const bool movable = logicalShift == std::floor(logicalShift);
  if (!comparable || damage.everything || !movable || !m_preedit.isEmpty()) {
    viewport()->update();
    Q_EMIT frameChanged();
    return;
  }
  if (damage.shift != DevicePixels(0)) {
    viewport()->scroll(0, static_cast<int>(logicalShift));
    const int above = static_cast<int>(std::ceil(m_frame.firstRowTop.toDouble() / m_fonts->scale()));
    if (above > 0) viewport()->update(0, 0, viewport()->width(), above);
  }
  updateRows(damage.dirtyRows);
  if (damage.shift != DevicePixels(0) || !damage.dirtyRows.empty()) Q_EMIT frameChanged();
}

void TextCanvas::updateScale() {
  const double scale = devicePixelRatioF();
  if (scale == m_fonts->scale()) return;
  m_fonts = std::make_unique<CanvasFonts>(m_fonts->font(), scale);
  m_frameValid = false;
}

TerminalSize TextCanvas::gridSizeFor(QSize size, double scale, const CanvasFont& font) {
  return gridSizeIn(size - QSize(ThinScrollBar::breadth, 0), CanvasFonts(font, scale));
}

void TextCanvas::updateGridSize() {
  updateScale();
  const TerminalSize size = gridSizeIn(viewport()->size(), *m_fonts);
  sync();
  m_source->setColumns(size.columns);
  m_frameValid = false;
  m_pacer.request();
  m_gridSize = size;
  if (m_source->screenRows() > 0) m_framesAtOnce = kFramesAtOnce;
  if (isVisible()) m_sizeNotifier.update(size);
}

void TextCanvas::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateGridSize();
}

void TextCanvas::showEvent(QShowEvent* event) {
  QAbstractScrollArea::showEvent(event);
  const QScreen* shownOn = screen();
  const double rate = shownOn != nullptr && shownOn->refreshRate() > 1 ? shownOn->refreshRate() : kUsualRefreshRate;
  m_pacer.setInterval(std::chrono::microseconds(std::lround(1e6 / rate)));
  m_isUnseen = false;
  updateGridSize();
}

void TextCanvas::hideEvent(QHideEvent* event) {
  QAbstractScrollArea::hideEvent(event);
  m_isUnseen = true;
  m_pacer.setInterval(kUnseenInterval);
}

bool TextCanvas::event(QEvent* event) {
  // A move to a screen of another density changes the scale without a resize.
  if (event->type() == QEvent::ScreenChangeInternal) updateGridSize();
  if (event->type() == QEvent::ShortcutOverride && m_input != nullptr &&
      m_input->claimsKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QAbstractScrollArea::event(event);
}

bool TextCanvas::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Paint && devicePixelRatioF() != m_fonts->scale()) updateGridSize();
  return QAbstractScrollArea::viewportEvent(event);
}

QRectF TextCanvas::rectOf(TextPosition position) {
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const TextRange range = m_rows[i]->range;
    const bool inRow =
        position >= range.begin && (position < range.end || (position == range.end && i + 1 == m_rows.size()));
    if (!inRow) continue;
    const ColumnRange columns = m_rows[i]->columnsOf(m_rows[i]->characterAt(position));
    const CanvasColumn column = m_rows[i]->columnOf(position);
    return rectOf(i, columns.empty() ? ColumnRange{.begin = column, .end = column + 1} : columns);
  }
  return {};
}

QRectF TextCanvas::rectOf(std::size_t row, ColumnRange columns) const {
  const CellMetrics& cell = m_fonts->metrics();
  return toLogical({.x = toDevice(inset) + cell.leftOf(columns.begin), .y = m_frame.topOf(row)},
                   cell.width * (columns.end - columns.begin), cell.height);
}

// Tab belongs to the shell.
bool TextCanvas::focusNextPrevChild(bool) {
  return false;
}

void TextCanvas::keyPressEvent(QKeyEvent* event) {
  if (m_input != nullptr) m_input->keyPressed(*event);
}

void TextCanvas::keyReleaseEvent(QKeyEvent* event) {
  if (m_input != nullptr) m_input->keyReleased(*event);
}

void TextCanvas::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  m_blinkedAway = false;
  viewport()->update();
  m_pacer.request();
  if (m_input != nullptr) m_input->focusChanged(true);
}

void TextCanvas::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  m_pacer.request();
  if (m_input != nullptr) m_input->focusChanged(false);
}

}  // namespace zolt
