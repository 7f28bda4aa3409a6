#include "panes/TabDrag.h"

#include <QDrag>
#include <QGuiApplication>
#include <QPixmap>
#include <QPointer>

#include "panes/TabStrip.h"

namespace zolt {

namespace {

constexpr auto kFormat = "application/x-zolt-tab";

struct Dragged {
  QPointer<TabStrip> from;
  std::uint64_t tab = 0;
};
std::optional<Dragged> dragged;

// Escape ends a drag while the button is still held. Elsewhere than on X11 nobody tells of the button then.
bool wasCancelled() {
  return QGuiApplication::platformName() == QLatin1String("xcb") &&
         QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
}

}  // namespace

int TabDrag::index() const {
  return from->indexOf(tab);
}

std::optional<TabDrag> TabDrag::of(const QMimeData& data) {
  if (!data.hasFormat(QLatin1String(kFormat)) || !dragged || dragged->from.isNull()) return std::nullopt;
  const TabDrag drag{.from = dragged->from, .tab = dragged->tab};
  return drag.index() < 0 ? std::nullopt : std::optional(drag);
}

TabDropResult dragTab(const TabDrag& tab, const QPixmap& picture, QPoint hotSpot) {
  auto* data = new QMimeData;
  data->setData(QLatin1String(kFormat), QByteArray());
  auto* drag = new QDrag(tab.from);
  drag->setMimeData(data);
  drag->setPixmap(picture);
  drag->setHotSpot(hotSpot);
  dragged = Dragged{.from = tab.from, .tab = tab.tab};
  const Qt::DropAction action = drag->exec(Qt::MoveAction);
  dragged.reset();
  if (action != Qt::IgnoreAction) return TabDropResult::Taken;
  return wasCancelled() ? TabDropResult::Cancelled : TabDropResult::Nowhere;
}

}  // namespace zolt
