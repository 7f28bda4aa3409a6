#include "panes/TabDrag.h"

#include <QDrag>
#include <QPixmap>
#include <QPointer>

#include "panes/TabStrip.h"

namespace zolt {

namespace {

constexpr auto kFormat = "application/x-zolt-tab";

struct Dragged {
  QPointer<TabStrip> from;
  int index = 0;
};
std::optional<Dragged> dragged;

}  // namespace

std::optional<TabDrag> TabDrag::of(const QMimeData& data) {
  if (!data.hasFormat(QLatin1String(kFormat)) || !dragged || dragged->from.isNull()) return std::nullopt;
  return TabDrag{.from = dragged->from, .index = dragged->index};
}

TabDropResult dragTab(TabStrip& from, int index, const QPixmap& picture, QPoint hotSpot) {
  auto* data = new QMimeData;
  data->setData(QLatin1String(kFormat), QByteArray());
  auto* drag = new QDrag(&from);
  drag->setMimeData(data);
  drag->setPixmap(picture);
  drag->setHotSpot(hotSpot);
  dragged = Dragged{.from = &from, .index = index};
  const Qt::DropAction action = drag->exec(Qt::MoveAction);
  dragged.reset();
  return action == Qt::IgnoreAction ? TabDropResult::Nowhere : TabDropResult::Taken;
}

}  // namespace zolt
