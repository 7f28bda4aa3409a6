// How the mouse and the clipboard work on a text canvas.
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QStyleHints>
#include <QTimerEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "canvas/CanvasInput.h"
#include "canvas/LinkLabel.h"
#include "canvas/TextCanvas.h"
#include "controls/CommandKey.h"
#include "controls/ThinScrollBar.h"

namespace zolt {

namespace {

constexpr int kAutoScrollMs = 30;
constexpr int kWheelUnitsPerNotch = 120;  // as QWheelEvent counts: eighths of a degree, 15 degrees a notch

// A selection of more characters is converted to text only when it is pasted.
constexpr std::uint64_t kSelectedAtOnce = std::uint64_t{1} << 20;

// The selection as text that is made when it is pasted; empty once the canvas is gone.
class SelectedLater : public QMimeData {
 public:
  SelectedLater(const TextCanvas& canvas, TextRange range) : m_canvas(&canvas), m_range(range) {}

  QStringList formats() const override { return {QStringLiteral("text/plain")}; }

 protected:
  QVariant retrieveData(const QString& type, QMetaType preferred) const override {
    if (!m_canvas || type != formats().front()) return {};
    const QString text = m_canvas->copiedText(m_range);
    return preferred == QMetaType::fromType<QString>() ? QVariant(text) : QVariant(text.toUtf8());
  }

 private:
  QPointer<const TextCanvas> m_canvas;
  TextRange m_range;
};

}  // namespace

TextPosition TextCanvas::positionAt(QPointF point) {
  if (m_rows.empty()) return {};
  const CellMetrics& cell = m_fonts->metrics();
  const DevicePixels y = toDevice(LogicalPixels(point.y())) - m_frame.firstRowTop;
  const auto index = std::clamp<std::int64_t>(y / cell.height, 0, std::ssize(m_rows) - 1);
  const RowContent& row = *m_rows[static_cast<std::size_t>(index)];
  if (y < DevicePixels(0)) return row.range.begin;
  // Below the last row is its end.
  if (y >= cell.height * std::ssize(m_rows)) return row.range.end;
  const double column = (toDevice(LogicalPixels(point.x())) - toDevice(inset)).toDouble() / cell.width.toDouble();
  return row.positionAt(CanvasColumn(static_cast<int>(std::lround(std::max(column, 0.0)))));
}

std::optional<RowPlace> TextCanvas::characterAt(QPointF point) const {
  if (m_rows.empty() || !QRectF(viewport()->rect()).contains(point)) return std::nullopt;
  const CellMetrics& cell = m_fonts->metrics();
  const std::int64_t index = (toDevice(LogicalPixels(point.y())) - m_frame.firstRowTop) / cell.height;
  const std::size_t row = static_cast<std::size_t>(std::clamp<std::int64_t>(index, 0, std::ssize(m_rows) - 1));
  const RowContent& content = *m_rows[row];
  if (index >= std::ssize(m_rows)) return RowPlace{.row = row, .position = content.range.end};
  const auto column = (toDevice(LogicalPixels(point.x())) - toDevice(inset)) / cell.width;
  const CanvasColumn wanted(static_cast<int>(std::max<std::int64_t>(column, 0)));
  // Within a wide character or a tab the next place is after it.
  const TextPosition next = content.positionAt(wanted);
  if (content.columnOf(next) <= wanted) return RowPlace{.row = row, .position = next};
  return RowPlace{.row = row, .position = content.characterAt(next.backBy(1)).begin};
}

SelectionEnd TextCanvas::selectableUnit(QPointF point, SelectionUnit unit) {
  TextPosition position = positionAt(point);
  if (unit == SelectionUnit::Rectangle) {
    const double column =
        (toDevice(LogicalPixels(point.x())) - toDevice(inset)).toDouble() / m_fonts->metrics().width.toDouble();
    return {.text = {.begin = position, .end = position},
            .column = CanvasColumn(std::clamp(static_cast<int>(std::lround(column)), 0, m_source->columns()))};
  }
  if (unit == SelectionUnit::Character) return {.text = {.begin = position, .end = position}, .column = {}};
  // A unit is that of the character under the pointer, not of the gap nearest to it.
  const QRectF right = rectOf(position);
  const double halfCell = m_fonts->metrics().width.toDouble() / (2 * m_fonts->scale());
  const bool isLeft = point.x() < right.x() && right.x() > inset.value + halfCell;
  if (isLeft) position = m_source->characterBefore(position);
  return {.text = unit == SelectionUnit::Word ? m_source->wordAt(position) : m_source->lineAt(position), .column = {}};
}

void TextCanvas::beginSelection(QPointF point, SelectionUnit unit) {
  m_selection.begin(unit, selectableUnit(point, unit));
  m_pointer = point;
  m_pacer.request();
}

void TextCanvas::extendSelection(QPointF point) {
  m_selection.extend(selectableUnit(point, m_selection.unit()));
  m_pacer.request();
}

void TextCanvas::select(TextRange range) {
  m_selection.begin(SelectionUnit::Character, range);
  selectionChanged();
}

void TextCanvas::clearSelection() {
  if (m_selection.empty()) return;
  m_selection.clear();
  m_pacer.request();
}

// Where the platform has a selection clipboard (X11, Wayland), a selection goes there.
void TextCanvas::selectionChanged() {
  m_pacer.request();
  QClipboard* clipboard = QApplication::clipboard();
  if (!clipboard->supportsSelection() || m_selection.empty()) return;
  const TextRange range = m_selection.range();
  if (!m_selection.isRectangle() && m_source->roughSize(range) > kSelectedAtOnce) {
    clipboard->setMimeData(new SelectedLater(*this, range), QClipboard::Selection);  // which owns it
  } else {
    clipboard->setText(selectedText(), QClipboard::Selection);
  }
}

QString TextCanvas::textOf(TextRange range) const {
  const std::string text = m_source->text(range);
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString TextCanvas::copiedText(TextRange range) const {
  return QString::fromStdString(m_source->copiedText(range));
}

QString TextCanvas::selectedText() const {
  const TextRange range = m_selection.range();
  return m_selection.isRectangle() ? rectangleText(range) : copiedText(range);
}

// Not one of a text that another has taken the place of.
bool TextCanvas::canCopy() const {
  const TextRange range = m_selection.range();
  return !m_selection.empty() && range.begin < m_source->end() && range.end > m_source->begin();
}

// The part of each row that is in the rectangle, without the blanks at its end.
QString TextCanvas::rectangleText(TextRange range) const {
  QString text;
  const CanvasRow last = m_source->rowAt(range.end);
  for (CanvasRow number = m_source->rowAt(range.begin); number <= last; ++number) {
    const std::shared_ptr<const RowContent> row = m_source->content(number);
    QString part = textOf(
        {.begin = row->positionAt(m_selection.columns().begin), .end = row->positionAt(m_selection.columns().end)});
    while (part.endsWith(QLatin1Char(' '))) {
      part.chop(1);
    }
    text += part;
    if (number < last) text += QLatin1Char('\n');
  }
  return text;
}

void TextCanvas::copy() {
  if (!canCopy()) return;
  // What was copied before is worth more than nothing.
  if (const QString text = selectedText(); !text.isEmpty()) QApplication::clipboard()->setText(text);
}

void TextCanvas::selectAll() {
  sync();
  select({.begin = m_source->begin(), .end = m_source->end()});
}

void TextCanvas::paste() {
  pasteFrom(QClipboard::Clipboard);
}

void TextCanvas::pasteSelection() {
  pasteFrom(QApplication::clipboard()->supportsSelection() ? QClipboard::Selection : QClipboard::Clipboard);
}

void TextCanvas::pasteFrom(int clipboardMode) {
  const QString text = QApplication::clipboard()->text(static_cast<QClipboard::Mode>(clipboardMode));
  if (m_input != nullptr && !text.isEmpty()) m_input->textPasted(text);
}

CanvasRow TextCanvas::firstScreenRow() const {
  return CanvasRow(m_source->screenRows() > 0 ? m_source->rowCount() - m_source->screenRows() : 0);
}

PointerPlace TextCanvas::placeOf(QPointF point) {
  const CellMetrics& cell = m_fonts->metrics();
  const DevicePixels screenTop = m_frame.firstRowTop + cell.height * (firstScreenRow() - m_firstRow);
  const DevicePoint pixel{.x = toDevice(LogicalPixels(point.x())) - toDevice(inset),
                          .y = toDevice(LogicalPixels(point.y())) - screenTop};
  const auto cellAt = [](DevicePixels at, DevicePixels size) {
    return static_cast<int>(std::floor(at.toDouble() / size.toDouble()));
  };
  return {.row = CanvasRow(cellAt(pixel.y, cell.height)),
          .column = CanvasColumn(cellAt(pixel.x, cell.width)),
          .pixel = pixel};
}

bool TextCanvas::isUsedByProgram(const QMouseEvent& event) {
  return m_input != nullptr && !m_pointer && m_input->pointerUsed(event, placeOf(event.position()));
}

// An origin in a text that another has taken the place of is none.
bool TextCanvas::canExtendSelection() const {
  const TextRange range = m_selection.range();
  const bool isHere = range.end >= m_source->begin() && range.begin <= m_source->end();
  return m_selectionStarted && isHere && (m_input == nullptr || !m_input->wantsPointer());
}

void TextCanvas::mousePressEvent(QMouseEvent* event) {
  // The pointer may have rested where the link went, or came, since it last moved.
  if (!m_pointer && viewport()->hasMouseTracking()) followLink(event->position(), event->modifiers());
  const bool opens = m_link && event->button() == Qt::LeftButton && holdsCommandKey(event->modifiers());
  if (opens && m_input != nullptr) return m_input->linkOpened(m_link->target);
  if (isUsedByProgram(*event)) return;
  if (event->button() == Qt::MiddleButton && QApplication::clipboard()->supportsSelection()) {
    pasteFrom(QClipboard::Selection);
    return;
  }
  if (event->button() != Qt::LeftButton) return;
  const QPointF point = event->position();
  const bool third = m_doubleClickTime >= 0 &&
                     static_cast<qint64>(event->timestamp()) - m_doubleClickTime <
                         QApplication::styleHints()->mouseDoubleClickInterval() &&
                     (point - m_doubleClickPoint).manhattanLength() < QApplication::startDragDistance();
  m_doubleClickTime = -1;
  if (third) {
    beginSelection(point, SelectionUnit::Line);
  } else if (event->modifiers().testFlag(Qt::ShiftModifier) && canExtendSelection()) {
    m_pointer = point;
    extendSelection(point);
  } else {
    const bool isRectangle = m_source->screenRows() > 0 && event->modifiers().testFlag(Qt::AltModifier);
    beginSelection(point, isRectangle ? SelectionUnit::Rectangle : SelectionUnit::Character);
    m_selectionStarted = true;
  }
}

void TextCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
  if (isUsedByProgram(*event)) return;
  if (event->button() != Qt::LeftButton) return;
  m_doubleClickTime = static_cast<qint64>(event->timestamp());
  m_doubleClickPoint = event->position();
  m_selectionStarted = true;
  beginSelection(event->position(), SelectionUnit::Word);
}

void TextCanvas::mouseMoveEvent(QMouseEvent* event) {
  if (!m_pointer && event->buttons() == Qt::NoButton) followLink(event->position(), event->modifiers());
  if (isUsedByProgram(*event) || !m_pointer) return;
  m_pointer = event->position();
  extendSelection(event->position());
  const bool outside = m_pointer->y() < 0 || m_pointer->y() >= viewport()->height();
  if (outside && m_autoScrollTimer == 0) {
    m_autoScrollTimer = startTimer(kAutoScrollMs);
  } else if (!outside && m_autoScrollTimer != 0) {
    killTimer(std::exchange(m_autoScrollTimer, 0));
  }
}

void TextCanvas::mouseReleaseEvent(QMouseEvent* event) {
  if (isUsedByProgram(*event)) return;
  if (event->button() != Qt::LeftButton || !m_pointer) return;
  m_pointer.reset();
  if (m_autoScrollTimer != 0) killTimer(std::exchange(m_autoScrollTimer, 0));
  selectionChanged();
}

// Dragging past an edge scrolls, the faster the farther away the pointer is.
void TextCanvas::timerEvent(QTimerEvent* event) {
  if (event->timerId() != m_autoScrollTimer || !m_pointer) {
    QAbstractScrollArea::timerEvent(event);
    return;
  }
  const double beyond = m_pointer->y() < 0 ? m_pointer->y() : std::max(m_pointer->y() - viewport()->height() + 1, 0.0);
  scrollTo(scrollOffset() + toDevice(LogicalPixels(beyond)));
  makeFrame();
  extendSelection(*m_pointer);
}

void TextCanvas::wheelEvent(QWheelEvent* event) {
  const double rowHeight = m_fonts->metrics().height.toDouble() / m_fonts->scale();
  const bool isTaken = m_input != nullptr && !event->modifiers().testFlag(Qt::ShiftModifier) &&
                       m_input->wheelTurned(*event, placeOf(event->position()), rowHeight);
  if (isTaken) return event->accept();
  double logical = event->pixelDelta().y();
  if (event->pixelDelta().isNull()) {
    const double rows =
        static_cast<double>(event->angleDelta().y()) / kWheelUnitsPerNotch * QApplication::wheelScrollLines();
    logical = rows * rowHeight;
  }
  if (logical != 0) scrollTo(scrollOffset() - toDevice(LogicalPixels(logical)));
  event->accept();
}

void TextCanvas::contextMenuEvent(QContextMenuEvent* event) {
  const bool isClick = event->reason() == QContextMenuEvent::Mouse;
  if (isClick && m_input != nullptr && m_input->holdsPointer()) return;
  auto* menu = new QMenu(this);
  connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);  // choosing an item only hides it
  menu->addActions(actions());
  menu->actions().front()->setEnabled(canCopy());
  connect(menu, &QMenu::aboutToHide, this, [this] { actions().front()->setEnabled(true); });
  menu->popup(event->globalPos());
}

void TextCanvas::setPointerFollowed(bool followed) {
  viewport()->setMouseTracking(followed);
  if (!followed) forgetLink();
}

// Underlines the link under the pointer, and tells where it leads.
void TextCanvas::followLink(QPointF point, Qt::KeyboardModifiers modifiers) {
  m_hoveredAt = point;
  const CellMetrics& cell = m_fonts->metrics();
  // The character under the pointer, which begins up to half a cell before the place that is nearest.
  const QPointF middle(point.x() - cell.width.toDouble() / (2 * m_fonts->scale()), point.y());
  const DevicePixels bottom = m_frame.topOf(m_rows.size());
  const bool isOnText = toDevice(LogicalPixels(point.y())) >= m_frame.firstRowTop &&
                        toDevice(LogicalPixels(point.y())) < bottom && point.x() >= inset.value;
  std::optional<CanvasLink> link = isOnText ? m_source->linkAt(positionAt(middle)) : std::nullopt;
  if (!link) return forgetLink();
  viewport()->setCursor(holdsCommandKey(modifiers) ? Qt::PointingHandCursor : Qt::IBeamCursor);
  if (m_link && m_link->range == link->range && m_link->target == link->target) return;
  m_link = std::move(link);
  if (m_linkLabel == nullptr) m_linkLabel = new LinkLabel(viewport());
  m_linkLabel->showTarget(m_input == nullptr ? QString() : m_input->shownTarget(m_link->target), point.toPoint());
  m_pacer.request();
}

void TextCanvas::forgetLink() {
  if (!m_link) return;
  m_link.reset();
  m_linkLabel->hide();
  viewport()->setCursor(Qt::IBeamCursor);
  m_pacer.request();
}

void TextCanvas::leaveEvent(QEvent* event) {
  QAbstractScrollArea::leaveEvent(event);
  forgetLink();
}

void TextCanvas::dragEnterEvent(QDragEnterEvent* event) {
  if (m_input != nullptr && m_input->canDrop(*event->mimeData())) event->acceptProposedAction();
}

void TextCanvas::dragMoveEvent(QDragMoveEvent* event) {
  event->acceptProposedAction();
}

void TextCanvas::dropEvent(QDropEvent* event) {
  if (m_input == nullptr || !m_input->canDrop(*event->mimeData())) return;
  event->acceptProposedAction();
  m_input->dropped(*event->mimeData());
}

}  // namespace zolt
