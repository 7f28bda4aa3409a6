#include "panes/TabStrip.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionTab>
#include <algorithm>
#include <chrono>

#include "controls/ControlColors.h"
#include "controls/TextScale.h"
#include "symbols/Symbol.h"

namespace zolt {

namespace {

constexpr int kHeight = 30;
constexpr int kWidest = 4000;  // as wide as there is room
constexpr int kNarrowest = 72;
constexpr int kPadding = 10;
constexpr int kMarkSize = 12;
constexpr int kMarkGap = 6;
constexpr int kCloseSize = 16;
constexpr int kCloseCross = 8;
constexpr double kRadius = 4;
constexpr int kGapBreadth = 2;
// How far out of the strip a tab is dragged before it leaves it.
constexpr int kPullOut = 24;
// How long a dragged tab is held over another before that one comes to the front.
constexpr std::chrono::milliseconds kRestTime{600};

QColor onGround(const ControlColors& colors, const QColor& ground, const QColor& color) {
  return readable(color, {ground}, colors.text);
}

}  // namespace

// Qt asks the style to draw tabs, dragged ones included.
class TabStyle : public QProxyStyle {
 public:
  explicit TabStyle(TabStrip& strip) : m_strip(strip) { setParent(&strip); }

  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (element != CE_TabBarTab || tab == nullptr) return QProxyStyle::drawControl(element, option, painter, widget);
    m_strip.paintTab(*painter, tab->rect, tab->tabIndex);
  }
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if (element != PE_FrameTabBarBase && element != PE_IndicatorTabTear) {
      QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }
  int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
    if (metric == PM_TabBarTabOverlap || metric == PM_TabBarTabShiftVertical) return 0;
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

 private:
  TabStrip& m_strip;
};

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
  setStyle(new TabStyle(*this));
  setAccessibleName(tr("Tabs"));
  setDrawBase(false);
  setExpanding(true);
  setMovable(true);
  setElideMode(Qt::ElideRight);
  setUsesScrollButtons(true);
  setFocusPolicy(Qt::NoFocus);
  setMouseTracking(true);
  setAcceptDrops(true);
  setContextMenuPolicy(Qt::DefaultContextMenu);
  m_restTimer.setSingleShot(true);
  connect(&m_restTimer, &QTimer::timeout, this, [this] {
    if (m_restsOn >= 0 && m_restsOn < count()) setCurrentIndex(m_restsOn);
  });
}

// Qt keeps a tab's own data with it wherever it is moved. It is a list, as a type of our own would have to be public.
TabStrip::TabData TabStrip::data(int index) const {
  const QVariantList list = tabData(index).toList();
  if (list.isEmpty()) return {};
  return {.id = list[0].toULongLong(),
          .title = list[1].toString(),
          .addition = list[2].toString(),
          .marks = list[3].value<TabMarks>()};
}

void TabStrip::setData(int index, const TabData& data) {
  setTabData(index, QVariantList{QVariant::fromValue(static_cast<qulonglong>(data.id)), data.title, data.addition,
                                 QVariant::fromValue(data.marks)});
  const QString words = inWords(data.marks);
  const QString title = data.title + data.addition;
  setAccessibleTabName(index, words.isEmpty() ? title : tr("%1, %2").arg(title, words));
  setTabToolTip(index, (words.isEmpty() ? title : tr("%1\n%2").arg(title, words))
                           .toHtmlEscaped()
                           .replace(QLatin1Char('\n'), QStringLiteral("<br>")));
  update(tabRect(index));
}

void TabStrip::addTabAt(int before) {
  static std::uint64_t lastId = 0;
  endReordering();
  insertTab(before, QString());
  setData(before, {.id = ++lastId, .title = {}, .addition = {}, .marks = {}});
}

void TabStrip::removeTabAt(int index) {
  endReordering();
  removeTab(index);
}

void TabStrip::turnTo(int index) {
  endReordering();
  setCurrentIndex(index);
}

int TabStrip::indexOf(std::uint64_t id) const {
  for (int index = 0; index < count(); ++index) {
    if (idOf(index) == id) return index;
  }
  return -1;
}

void TabStrip::setTitle(int index, const QString& title, const QString& addition) {
  TabData data = this->data(index);
  if (data.title == title && data.addition == addition) return;
  data.title = title;
  data.addition = addition;
  setData(index, data);
}

void TabStrip::setMarks(int index, const TabMarks& marks) {
  TabData data = this->data(index);
  if (data.marks == marks) return;
  data.marks = marks;
  setData(index, data);
}

// While a tab is being reordered Qt refuses to turn to another one.
void TabStrip::endReordering() {
  if (m_pressed < 0) return;
  m_pressed = -1;
  QMouseEvent release(QEvent::MouseButtonRelease, m_pressedAt, mapToGlobal(m_pressedAt), Qt::LeftButton, Qt::NoButton,
                      Qt::NoModifier);
  QTabBar::mouseReleaseEvent(&release);
}

void TabStrip::tabInserted(int index) {
  QTabBar::tabInserted(index);
  m_pressed = m_pressedClose = m_pressedMiddle = -1;
}

void TabStrip::tabRemoved(int index) {
  QTabBar::tabRemoved(index);
  m_pressed = m_pressedClose = m_pressedMiddle = -1;
}

void TabStrip::setGround(const QColor& ground) {
  m_ground = ground;
  update();
}

QSize TabStrip::tabSizeHint(int) const {
  const int room = count() > 0 ? width() / count() : kWidest;
  return {std::clamp(room, scaledToText(kNarrowest, font()), kWidest), scaledToText(kHeight, font())};
}

QSize TabStrip::minimumTabSizeHint(int) const {
  return {scaledToText(kNarrowest, font()), scaledToText(kHeight, font())};
}

QRect TabStrip::closeRect(const QRect& tab) const {
  const int size = scaledToText(kCloseSize, font());
  const int inset = (tab.height() - size) / 2;
  const QRect atEnd(tab.right() + 1 - inset - size, tab.top() + inset, size, size);
  return QStyle::visualRect(layoutDirection(), tab, atEnd);
}

void TabStrip::paintTab(QPainter& painter, const QRect& rect, int index) const {
  const ControlColors colors(palette());
  const bool isCurrent = index == currentIndex();
  const bool isHovered = index == m_hovered;
  const QColor back = isCurrent   ? m_ground
                      : isHovered ? mixed(m_ground, colors.text, 0.16)
                                  : mixed(m_ground, colors.text, 0.09);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(rect, back);
  if (!isCurrent) painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), mixed(back, colors.text, 0.12));
  if (index + 1 < count()) {
    painter.fillRect(QRect(rect.right(), rect.top(), 1, rect.height()), mixed(m_ground, colors.text, 0.22));
  }
  const QColor text = isCurrent ? colors.text : onGround(colors, back, mixed(back, colors.text, 0.7));
  const QRect close = closeRect(rect);
  if (isCurrent || isHovered) {
    if (isHovered && m_closeIsHovered) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(mixed(back, colors.text, m_pressedClose == index ? 0.35 : 0.22));
      painter.drawRoundedRect(close, kRadius, kRadius);
    }
    const int cross = scaledToText(kCloseCross, font());
    QRect icon(0, 0, cross, cross);
    icon.moveCenter(close.center());
    symbol(QStringLiteral("xmark"), text).paint(&painter, icon);
  }
  // The marks come before the title; the two are centred together.
  const TabMarks shown = marks(index);
  const int size = scaledToText(kMarkSize, font());
  const int gap = scaledToText(kMarkGap, font());
  const int padding = scaledToText(kPadding, font());
  const QString status = shown.exitStatus ? QString::number(*shown.exitStatus) : QString();
  const int statusWidth = status.isEmpty() ? 0 : fontMetrics().horizontalAdvance(status) + gap;
  int marksWidth = statusWidth;
  const bool hasDot = shown.hasActivity && !shown.hasBell;
  for (const bool isShown : {shown.hasBell, hasDot, shown.progress.kind != TabProgress::Kind::None}) {
    if (isShown) marksWidth += size + gap;
  }
  const bool hasCross = isCurrent || isHovered;
  const int end = hasCross ? close.left() - padding / 2 : rect.right() + 1 - padding;
  const QRect room(QPoint(rect.left() + padding, rect.top()), QPoint(end - 1, rect.bottom()));
  const QString title =
      fontMetrics().elidedText(shownTitle(index), Qt::ElideRight, std::max(room.width() - marksWidth, 0));
  const int width = marksWidth + fontMetrics().horizontalAdvance(title);
  int x = std::max(std::min(rect.center().x() - width / 2, end - width), room.left());
  const auto next = [&] {
    const QRect mark(x, rect.center().y() - size / 2, size, size);
    x += size + gap;
    return mark;
  };
  if (shown.hasBell)
    symbol(QStringLiteral("bell.fill"), onGround(colors, back, QColor(0xE0, 0x9A, 0x1A))).paint(&painter, next());
  if (hasDot) {
    const QRectF at = next();
    const double inset = size * 0.22;
    painter.setPen(Qt::NoPen);
    painter.setBrush(onGround(colors, back, colors.accent));
    painter.drawEllipse(at.adjusted(inset, inset, -inset, -inset));
  }
  if (shown.progress.kind != TabProgress::Kind::None) {
    const QRectF ring = QRectF(next()).adjusted(1.5, 1.5, -1.5, -1.5);
    const QColor color = shown.progress.kind == TabProgress::Kind::Error    ? colors.destructive
                         : shown.progress.kind == TabProgress::Kind::Paused ? text
                                                                            : colors.accent;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(mixed(back, colors.text, 0.3), 2.5));
    painter.drawEllipse(ring);
    constexpr int kFullCircle = 360 * 16;
    constexpr int kTop = 90 * 16;
    const bool isOpenEnded = shown.progress.kind == TabProgress::Kind::Indeterminate;
    const int span = isOpenEnded ? kFullCircle / 4 : kFullCircle * shown.progress.percent / 100;
    painter.setPen(QPen(onGround(colors, back, color), 2.5, Qt::SolidLine, Qt::FlatCap));
    painter.drawArc(ring, kTop, -span);
  }
  if (!status.isEmpty()) {
    painter.setPen(*shown.exitStatus == 0 ? text : onGround(colors, back, colors.destructive));
    painter.drawText(QRect(x, rect.top(), statusWidth, rect.height()), Qt::AlignVCenter | Qt::AlignLeft, status);
    x += statusWidth;
  }
  painter.setPen(text);
  painter.drawText(QRect(x, rect.top(), room.right() + 1 - x, rect.height()), Qt::AlignVCenter | Qt::AlignLeft, title);
  painter.restore();
}

void TabStrip::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(this);
    painter.fillRect(event->rect(), mixed(m_ground, ControlColors(palette()).text, 0.09));
  }
  QTabBar::paintEvent(event);
  if (m_gap < 0) return;
  QPainter painter(this);
  const int x = m_gap < count() ? tabRect(m_gap).left() : tabRect(count() - 1).right() + 1;
  painter.fillRect(QRect(std::clamp(x - kGapBreadth / 2, 0, width() - kGapBreadth), 0, kGapBreadth, height()),
                   ControlColors(palette()).accent);
}

void TabStrip::mousePressEvent(QMouseEvent* event) {
  const int index = tabAt(event->pos());
  m_pressedClose =
      event->button() == Qt::LeftButton && index >= 0 && closeRect(tabRect(index)).contains(event->pos()) ? index : -1;
  if (m_pressedClose >= 0) return update();
  m_pressedMiddle = event->button() == Qt::MiddleButton ? index : -1;
  m_pressed = event->button() == Qt::LeftButton ? index : -1;
  m_pressedAt = event->pos();
  QTabBar::mousePressEvent(event);
}

void TabStrip::mouseMoveEvent(QMouseEvent* event) {
  const int index = tabAt(event->pos());
  const bool onClose = index >= 0 && closeRect(tabRect(index)).contains(event->pos());
  if (index != m_hovered || onClose != m_closeIsHovered) {
    m_hovered = index;
    m_closeIsHovered = onClose;
    update();
  }
  if (m_pressedClose >= 0) return;
  const bool isOut = !rect().adjusted(-kPullOut, -kPullOut, kPullOut, kPullOut).contains(event->pos());
  if (m_pressed >= 0 && event->buttons().testFlag(Qt::LeftButton) && isOut) return dragOut(event->pos());
  QTabBar::mouseMoveEvent(event);
}

void TabStrip::mouseReleaseEvent(QMouseEvent* event) {
  const int index = tabAt(event->pos());
  m_pressed = -1;
  if (m_pressedClose >= 0) {
    const int closed = std::exchange(m_pressedClose, -1);
    update();
    if (closed == index && closeRect(tabRect(index)).contains(event->pos())) Q_EMIT closeWanted(closed);
    return;
  }
  QTabBar::mouseReleaseEvent(event);
  const bool isMiddle = event->button() == Qt::MiddleButton && index >= 0 && index == m_pressedMiddle;
  m_pressedMiddle = -1;
  if (isMiddle) Q_EMIT closeWanted(index);
}

void TabStrip::mouseDoubleClickEvent(QMouseEvent* event) {
  const int index = tabAt(event->pos());
  if (event->button() == Qt::LeftButton && index >= 0 && !closeRect(tabRect(index)).contains(event->pos())) {
    editName(index);
  } else {
    mousePressEvent(event);  // a quick second click
  }
}

QPixmap TabStrip::pictureOf(int index) {
  const QSize size = tabRect(index).size();
  QPixmap picture(size * devicePixelRatioF());
  picture.setDevicePixelRatio(devicePixelRatioF());
  QPainter painter(&picture);
  painter.setFont(font());
  paintTab(painter, QRect(QPoint(), size), index);
  return picture;
}

// Ends the strip's own way of dragging, which only reorders.
void TabStrip::dragOut(QPoint at) {
  const TabDrag tab{.from = this, .tab = idOf(currentIndex())};
  endReordering();
  m_hovered = -1;
  m_closeIsHovered = false;
  const QRect area = tabRect(tab.index());
  const QPoint hotSpot(std::clamp(at.x() - area.left(), 0, area.width()), area.height() / 2);
  const QPointer<TabStrip> self(this);
  const TabDropResult result = dragTab(tab, pictureOf(tab.index()), hotSpot);
  if (result != TabDropResult::Nowhere || !self || tab.index() < 0) return;
  Q_EMIT tornOff(tab.index(), QCursor::pos() - hotSpot);
}

void TabStrip::leaveEvent(QEvent* event) {
  QTabBar::leaveEvent(event);
  m_hovered = -1;
  m_closeIsHovered = false;
  update();
}

void TabStrip::contextMenuEvent(QContextMenuEvent* event) {
  if (const int index = tabAt(event->pos()); index >= 0) Q_EMIT menuWanted(index, event->globalPos());
}

// The number of the tab before which something dropped at `point` would land.
int TabStrip::gapAt(QPoint point) const {
  for (int index = 0; index < count(); ++index) {
    if (point.x() < tabRect(index).center().x()) return index;
  }
  return count();
}

void TabStrip::showGap(int gap) {
  m_gap = gap;
  update();
}

void TabStrip::dragEnterEvent(QDragEnterEvent* event) {
  if (!TabDrag::of(*event->mimeData())) return;
  event->acceptProposedAction();
  showGap(gapAt(event->position().toPoint()));
}

// A tab that rests on another one brings that to the front, so that it can be dropped on its terminals.
void TabStrip::dragMoveEvent(QDragMoveEvent* event) {
  if (!TabDrag::of(*event->mimeData())) return;
  event->acceptProposedAction();
  if (const int over = tabAt(event->position().toPoint()); over != m_restsOn) {
    m_restsOn = over;
    m_restTimer.start(kRestTime);
  }
  showGap(gapAt(event->position().toPoint()));
}

void TabStrip::dragLeaveEvent(QDragLeaveEvent*) {
  m_restTimer.stop();
  m_restsOn = -1;
  showGap(-1);
}

void TabStrip::dropEvent(QDropEvent* event) {
  m_restTimer.stop();
  m_restsOn = -1;
  showGap(-1);
  const auto tab = TabDrag::of(*event->mimeData());
  if (!tab) return;
  event->acceptProposedAction();
  Q_EMIT tabDropped(*tab, gapAt(event->position().toPoint()));
}

void TabStrip::editName(int index) {
  endEditing(false);
  turnTo(index);
  m_edited = idOf(index);
  m_editor = new QLineEdit(title(index), this);
  m_editor->setObjectName(QStringLiteral("tabName"));
  m_editor->setAccessibleName(tr("Tab name"));
  m_editor->setAlignment(Qt::AlignCenter);
  placeEditor();
  m_editor->installEventFilter(this);
  connect(m_editor, &QLineEdit::returnPressed, this, [this] { endEditing(true); });
  m_editor->show();
  m_editor->selectAll();
  m_editor->setFocus();
}

void TabStrip::endEditing(bool keep) {
  if (!m_editor) return;
  QLineEdit* editor = m_editor;
  m_editor = nullptr;
  const QString name = editor->text().trimmed();
  const bool isChanged = editor->isModified();
  editor->removeEventFilter(this);
  editor->hide();
  editor->deleteLater();
  if (const int index = indexOf(m_edited); keep && isChanged && index >= 0) Q_EMIT named(index, name);
}

void TabStrip::placeEditor() {
  constexpr int kInset = 3;
  if (const int index = indexOf(m_edited); index < 0) {
    endEditing(false);
  } else {
    m_editor->setGeometry(tabRect(index).adjusted(kInset, kInset, -kInset, -kInset));
  }
}

void TabStrip::tabLayoutChange() {
  QTabBar::tabLayoutChange();
  if (m_editor) placeEditor();
}

bool TabStrip::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_editor) return QTabBar::eventFilter(watched, event);
  if (event->type() == QEvent::FocusOut) {
    endEditing(true);
  } else if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    endEditing(false);
    return true;
  } else if (event->type() == QEvent::ShortcutOverride) {
    event->accept();  // what is typed here is not a shortcut
  }
  return QTabBar::eventFilter(watched, event);
}

}  // namespace zolt
