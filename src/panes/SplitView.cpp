#include "panes/SplitView.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "controls/ControlColors.h"
#include "controls/Hairline.h"

namespace zolt {

namespace {

PaneId nextId() {
  static std::uint64_t last = 0;
  return PaneId{++last};
}

// The parts with other names for the panes, which are numbers in `ids`.
SplitLayout::Part renamed(const SplitLayout::Part& part, const std::vector<PaneId>& ids) {
  SplitLayout::Part result = part;
  if (part.pane) result.pane = ids[static_cast<std::size_t>(*part.pane)];
  std::ranges::transform(part.parts, result.parts.begin(),
                         [&ids](const SplitLayout::Part& each) { return renamed(each, ids); });
  return result;
}

QRect toRect(const PaneRect& rect) {
  return {rect.x, rect.y, rect.size.width, rect.size.height};
}

bool isSame(const SplitLayout::Divider& one, const SplitLayout::Divider& other) {
  return one.path == other.path && one.part == other.part;
}

}  // namespace

SplitView::SplitView(QWidget& first, QWidget* parent) : QWidget(parent), m_layout(nextId()) {
  init();
  adopt(first, m_layout.panes().front());
  placePanes();
}

SplitView::SplitView(const std::vector<QWidget*>& panes, const SplitLayout& layout, QWidget* parent)
    : QWidget(parent), m_layout(layout) {
  std::vector<PaneId> ids(panes.size());
  std::ranges::generate(ids, nextId);
  m_layout = SplitLayout(renamed(layout.root(), ids));
  init();
  for (std::size_t i = 0; i < panes.size(); ++i) {
    adopt(*panes[i], ids[i]);
  }
  placePanes();
}

void SplitView::init() {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMouseTracking(true);
}

std::vector<QWidget*> SplitView::panes() const {
  std::vector<QWidget*> widgets;
  if (m_panes.empty()) return widgets;
  for (const PaneId pane : m_layout.panes()) {
    widgets.push_back(m_panes.at(pane));
  }
  return widgets;
}

PaneId SplitView::idOf(const QWidget& pane) const {
  const auto found = std::ranges::find(m_panes, &pane, &std::pair<const PaneId, QWidget*>::second);
  return found->first;
}

QWidget* SplitView::widgetOf(std::optional<PaneId> pane) const {
  return pane ? m_panes.at(*pane) : nullptr;
}

void SplitView::adopt(QWidget& pane, PaneId id) {
  m_panes[id] = &pane;
  pane.setParent(this);
}

void SplitView::split(const QWidget& beside, Direction side, QWidget& added) {
  const PaneId id = nextId();
  m_layout.split(idOf(beside), side, id);
  adopt(added, id);
  m_zoomed = nullptr;
  rearrange();
}

void SplitView::split(const QWidget& beside, Direction side, SplitView& others) {
  m_layout.split(idOf(beside), side, others.m_layout);
  for (const auto& [id, pane] : std::exchange(others.m_panes, {})) {
    adopt(*pane, id);
  }
  m_zoomed = nullptr;
  rearrange();
}

void SplitView::take(QWidget& pane) {
  const PaneId id = idOf(pane);
  m_panes.erase(id);
  m_zoomed = nullptr;
  if (!m_panes.empty()) m_layout.remove(id);
  pane.hide();
  pane.setParent(nullptr);
  if (!m_panes.empty()) rearrange();
}

bool SplitView::putBack(QWidget& pane, PaneId id, const SplitLayout& before) {
  const std::vector<PaneId> then = before.panes();
  const bool isComplete = then.size() == m_panes.size() + 1 &&
                          std::ranges::all_of(then, [&](PaneId each) { return each == id || m_panes.contains(each); });
  if (!isComplete) return false;
  m_layout = before;
  adopt(pane, id);
  m_zoomed = nullptr;
  rearrange();
  return true;
}

void SplitView::swap(const QWidget& one, const QWidget& other) {
  m_layout.swap(idOf(one), idOf(other));
  m_zoomed = nullptr;
  rearrange();
}

void SplitView::equalise() {
  m_layout.equalise();
  m_zoomed = nullptr;
  rearrange();
}

QWidget* SplitView::neighbour(const QWidget& pane, Direction direction) const {
  return widgetOf(m_layout.neighbour(idOf(pane), direction, wholeSize()));
}

bool SplitView::moveEdge(const QWidget& pane, Direction direction, int pixels) {
  if (m_zoomed != nullptr || !m_layout.moveEdge(idOf(pane), direction, pixels, wholeSize())) return false;
  rearrange();
  return true;
}

void SplitView::setZoomed(QWidget* pane) {
  if (m_panes.size() == 1) pane = nullptr;
  if (m_zoomed == pane) return;
  m_zoomed = pane;
  rearrange();
}

void SplitView::setGround(const QColor& ground) {
  m_ground = ground;
  update();
}

// For another arrangement than the one that a divider may have been taken in.
void SplitView::rearrange() {
  m_hovered.reset();
  releaseDivider();
  placePanes();
}

void SplitView::releaseDivider() {
  if (!m_grabbed) return;
  m_grabbed.reset();
  Q_EMIT dividerReleased();
}

// A pane that comes into view has its size before it is shown, so that its program is told of one size only.
void SplitView::placePanes() {
  for (const SplitLayout::Place& place : m_layout.places(wholeSize()).panes) {
    QWidget* pane = m_panes.at(place.pane);
    const bool isShown = m_zoomed == nullptr || m_zoomed == pane;
    if (isShown) pane->setGeometry(m_zoomed == pane ? rect() : toRect(place.rect));
    pane->setVisible(isShown);
  }
  update();
}

void SplitView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  rearrange();
}

void SplitView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(event->rect(), m_ground);
  if (m_zoomed != nullptr) return;
  const ControlColors colors(palette());
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  for (const SplitLayout::Divider& divider : m_layout.places(wholeSize()).dividers) {
    const bool isMarked = (m_grabbed && isSame(divider, *m_grabbed)) || (m_hovered && isSame(divider, *m_hovered));
    QRect line = toRect(divider.rect);
    const int inset = isMarked ? SplitLayout::dividerBreadth / 2 - 1 : SplitLayout::dividerBreadth / 2;
    divider.axis == SplitAxis::SideBySide ? line.adjust(inset, 0, -inset, 0) : line.adjust(0, inset, 0, -inset);
    if (isMarked) {
      painter.fillRect(line, colors.accent);
    } else {
      painter.fillRect(line, mixed(colors.window, colors.text, 0.25));
    }
  }
}

std::optional<SplitLayout::Divider> SplitView::dividerAt(QPoint point) const {
  if (m_zoomed != nullptr) return std::nullopt;
  const std::vector<SplitLayout::Divider> dividers = m_layout.places(wholeSize()).dividers;
  const auto found = std::ranges::find_if(
      dividers, [&](const SplitLayout::Divider& each) { return toRect(each.rect).contains(point); });
  return found == dividers.end() ? std::nullopt : std::optional(*found);
}

void SplitView::hover(QPoint point) {
  m_hovered = dividerAt(point);
  if (m_hovered) {
    setCursor(m_hovered->axis == SplitAxis::SideBySide ? Qt::SplitHCursor : Qt::SplitVCursor);
  } else {
    unsetCursor();
  }
  update();
}

void SplitView::mousePressEvent(QMouseEvent* event) {
  m_grabbed = event->button() == Qt::LeftButton ? dividerAt(event->pos()) : std::nullopt;
  if (!m_grabbed) return QWidget::mousePressEvent(event);
  const bool isSideBySide = m_grabbed->axis == SplitAxis::SideBySide;
  m_grabbedAt = isSideBySide ? event->pos().x() - m_grabbed->rect.x : event->pos().y() - m_grabbed->rect.y;
  Q_EMIT dividerGrabbed();
}

void SplitView::mouseMoveEvent(QMouseEvent* event) {
  if (!m_grabbed) return hover(event->pos());
  const int at = m_grabbed->axis == SplitAxis::SideBySide ? event->pos().x() : event->pos().y();
  if (m_layout.moveDivider(*m_grabbed, at - m_grabbedAt, wholeSize())) placePanes();
}

void SplitView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !m_grabbed) return;
  releaseDivider();
  hover(event->pos());
}

void SplitView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && dividerAt(event->pos())) equalise();
}

void SplitView::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  m_hovered.reset();
  update();
}

}  // namespace zolt
