#include "canvas/TextCanvas.h"

#include <QAction>
#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <iterator>

#include "canvas/CanvasAccessible.h"
#include "canvas/CanvasInput.h"
#include "canvas/CanvasMarks.h"
#include "canvas/RowPainter.h"
#include "controls/CommandKey.h"
#include "controls/ThinScrollBar.h"

namespace zolt {

namespace {

constexpr double kFontSize = 14;
// Fetching rows can correct estimates, which moves rows. Each round touches few blocks, so a few rounds are enough.
constexpr int kLayoutRounds = 16;
constexpr std::chrono::milliseconds kRefineInterval{5};

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

}  // namespace

TextCanvas::TextCanvas(std::unique_ptr<RowSource> source, QWidget* parent, Clock& clock)
    : QAbstractScrollArea(parent),
      m_source(std::move(source)),
      m_fonts(std::make_unique<CanvasFonts>(kFontSize, 1)),
      m_pacer([this] { makeFrame(); }, clock),
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
  QPalette black;
  black.setColor(QPalette::Window, Qt::black);
  black.setColor(QPalette::Base, Qt::black);
  black.setColor(QPalette::Text, Qt::white);
  setPalette(black);
  viewport()->setPalette(black);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setCursor(Qt::IBeamCursor);
  addActions();
  m_refineTimer.setInterval(kRefineInterval);
  connect(&m_refineTimer, &QTimer::timeout, this, [this] {
    const std::uint64_t before = m_source->generation();
    if (!m_source->refine()) m_refineTimer.stop();
    if (m_source->generation() != before) m_pacer.request();
  });
}

TextCanvas::~TextCanvas() = default;

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

void TextCanvas::scrollToEndOfDocument() {
  m_atEnd = true;
  m_pacer.request();
}

ScrollModel TextCanvas::scrollModel() const {
  return {.contentHeight = m_source->rowCount() * m_fonts->metrics().height + 2 * toDevice(inset),
          .viewportHeight = deviceHeight()};
}

DevicePixels TextCanvas::offsetNow() {
  const ScrollModel model = scrollModel();
  if (m_atEnd) return model.maximum();
  return model.clamped(m_fonts->metrics().topOf(m_source->rowAt(m_anchor)) + m_anchorDelta);
}

DevicePixels TextCanvas::scrollOffset() {
  m_source->sync();
  return offsetNow();
}

DevicePixels TextCanvas::scrollMaximum() {
  m_source->sync();
  return scrollModel().maximum();
}

void TextCanvas::setOffset(DevicePixels offset) {
  const ScrollModel model = scrollModel();
  offset = model.clamped(offset);
  m_atEnd = offset == model.maximum();
  const CanvasRow row(std::min(offset / m_fonts->metrics().height, m_source->rowCount() - 1));
  m_anchor = m_source->rowRange(row).begin;
  m_anchorDelta = offset - m_fonts->metrics().topOf(row);
}

void TextCanvas::scrollTo(DevicePixels offset) {
  m_source->sync();
  setOffset(offset);
  m_bar->flash();
  m_pacer.request();
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

// Finds the rows in view, as the source now has them, into m_frame and m_rows.
void TextCanvas::layOut() {
  const CellMetrics& cell = m_fonts->metrics();
  const DevicePixels viewportHeight = deviceHeight();
  m_source->sync();
  for (int round = 0; round < kLayoutRounds; ++round) {
    const std::uint64_t generation = m_source->generation();
    const DevicePixels top = offsetNow() - toDevice(inset);
    const DevicePixels bottom = top + viewportHeight - DevicePixels(1);
    const CanvasRow first(std::max(top, DevicePixels(0)) / cell.height);
    const CanvasRow last(std::min(bottom / cell.height, m_source->rowCount() - 1));
    m_rows.clear();
    m_frame.rows.clear();
    m_frame.rowHeight = cell.height;
    m_frame.firstRowTop = cell.topOf(first) - top;
    for (CanvasRow row = first; row <= last; ++row) {
      m_rows.push_back(m_source->content(row));
      m_frame.rows.push_back(keyOf(m_rows.back()));
    }
    if (m_source->generation() == generation) break;
  }
}

RowKey TextCanvas::keyOf(const RowContent& row) const {
  RowKey key{.text = row.range, .stamp = row.stamp, .selected = row.columnsOf(m_selection.range())};
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
  layOut();
  updateScrollBar();
  if (!m_refineTimer.isActive()) m_refineTimer.start();
  const FrameDamage damage = compareFrames(before, m_frame, deviceHeight());
  const double logicalShift = damage.shift.toDouble() / m_fonts->scale();
  const bool movable = logicalShift == std::floor(logicalShift);
  if (!comparable || damage.everything || !movable || !m_preedit.isEmpty()) {
    viewport()->update();
    return;
  }
  if (damage.shift != DevicePixels(0)) viewport()->scroll(0, static_cast<int>(logicalShift));
  updateRows(damage.dirtyRows);
}

void TextCanvas::updateRows(const std::vector<std::size_t>& rows) {
  for (const std::size_t row : rows) {
    QRectF area = toLogical({.x = {}, .y = m_frame.topOf(row)}, {}, m_frame.rowHeight);
    area.setWidth(viewport()->width());
    viewport()->update(area.toAlignedRect());
  }
}

void TextCanvas::paintEvent(QPaintEvent* event) {
  if (!m_frameValid) {
    layOut();
    updateScrollBar();
    m_frameValid = true;
  }
  QPainter painter(viewport());
  const double scale = m_fonts->scale();
  // Device pixels: glyphs are drawn at their own size, and nothing falls between two pixels.
  painter.scale(1 / scale, 1 / scale);
  RowPainter rows(*m_fonts);
  for (const QRect& logical : event->region()) {
    const QRectF area(logical.x() * scale, logical.y() * scale, logical.width() * scale, logical.height() * scale);
    painter.setClipRect(area);
    painter.fillRect(area, Qt::black);
    const double firstRow = (area.top() - m_frame.firstRowTop.toDouble()) / m_frame.rowHeight.toDouble();
    for (auto row = static_cast<std::size_t>(std::max(firstRow, 0.0)); row < m_rows.size(); ++row) {
      const DevicePoint at{.x = toDevice(inset), .y = m_frame.topOf(row)};
      if (at.y.toDouble() >= area.bottom()) break;
      rows.paint(m_rows[row], m_frame.rows[row].selected);
      paintMarks(rows, row);
      rows.draw(painter, at);
    }
  }
  paintPreedit(painter);
}

// Text that is being composed stands after the last character, underlined.
void TextCanvas::paintPreedit(QPainter& painter) {
  if (m_preedit.isEmpty()) return;
  const CellMetrics& cell = m_fonts->metrics();
  const double scale = m_fonts->scale();
  const QRectF caret = inputMethodQuery(Qt::ImCursorRectangle).toRectF();
  const QRectF at(caret.x() * scale, caret.y() * scale, caret.width() * scale, caret.height() * scale);
  QFont font = CanvasFonts::systemFont(kFontSize * scale);
  font.setUnderline(true);
  painter.setClipping(false);
  painter.setFont(font);
  const double width = QFontMetricsF(font).horizontalAdvance(m_preedit);
  painter.fillRect(QRectF(at.left(), at.top(), width, cell.height.toDouble()), Qt::black);
  painter.setPen(Qt::white);
  painter.drawText(QPointF(at.left(), at.top() + cell.baseline.toDouble()), m_preedit);
}

void TextCanvas::updateScale() {
  const double scale = devicePixelRatioF();
  if (scale == m_fonts->scale()) return;
  m_fonts = std::make_unique<CanvasFonts>(kFontSize, scale);
  m_frameValid = false;
}

TerminalSize TextCanvas::gridSizeFor(QSize size, double scale) {
  return gridSizeIn(size - QSize(ThinScrollBar::breadth, 0), CanvasFonts(kFontSize, scale));
}

void TextCanvas::updateGridSize() {
  updateScale();
  const TerminalSize size = gridSizeIn(viewport()->size(), *m_fonts);
  m_source->sync();
  m_source->setColumns(size.columns);
  m_frameValid = false;
  m_pacer.request();
  m_gridSize = size;
  if (isVisible()) m_sizeNotifier.update(size);
}

void TextCanvas::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateGridSize();
}

void TextCanvas::showEvent(QShowEvent* event) {
  QAbstractScrollArea::showEvent(event);
  if (const QScreen* shownOn = screen(); shownOn != nullptr && shownOn->refreshRate() > 1) {
    m_pacer.setInterval(std::chrono::microseconds(std::lround(1e6 / shownOn->refreshRate())));
  }
  updateGridSize();
}

bool TextCanvas::event(QEvent* event) {
  // A move to a screen of another density changes the scale without a resize.
  if (event->type() == QEvent::ScreenChangeInternal) updateGridSize();
  return QAbstractScrollArea::event(event);
}

bool TextCanvas::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Paint && devicePixelRatioF() != m_fonts->scale()) updateGridSize();
  return QAbstractScrollArea::viewportEvent(event);
}

QRectF TextCanvas::rectOf(TextPosition position) {
  const CellMetrics& cell = m_fonts->metrics();
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    const TextRange range = m_rows[i].range;
    const bool inRow =
        position >= range.begin && (position < range.end || (position == range.end && i + 1 == m_rows.size()));
    if (!inRow) continue;
    const CanvasColumn column = m_rows[i].columnOf(position);
    return toLogical({.x = toDevice(inset) + cell.leftOf(column), .y = m_frame.topOf(i)}, cell.width, cell.height);
  }
  return {};
}

// Tab belongs to the shell.
bool TextCanvas::focusNextPrevChild(bool) {
  return false;
}

void TextCanvas::keyPressEvent(QKeyEvent* event) {
  if (m_input != nullptr) m_input->keyPressed(*event);
}

void TextCanvas::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

}  // namespace zolt
