#include "panes/TabDrag.h"

#include <QCoreApplication>
#include <QDrag>
#include <QKeyEvent>
#include <QPixmap>
#include <QPointer>
#include <QTimer>

#include "panes/TabStrip.h"

namespace zolt {

namespace {

constexpr auto kFormat = "application/x-zolt-tab";

struct Dragged {
  QPointer<TabStrip> from;
  std::uint64_t tab = 0;
  QPointer<QWidget> pane;
  bool isPane = false;
};
std::optional<Dragged> dragged;

// Sees keys before the drag does, which begins to watch them when it runs. Keys go to windows and widgets; what other
// objects are sent is none of its business, and may come from other threads.
class EscapeWatch : public QObject {
 public:
  EscapeWatch() {
    QTimer::singleShot(0, this, [this] { QCoreApplication::instance()->installEventFilter(this); });
  }
  bool wasPressed() const { return m_wasPressed; }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!watched->isWidgetType() && !watched->isWindowType()) return false;
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) m_wasPressed = true;
    return false;
  }

 private:
  bool m_wasPressed = false;
};

}  // namespace

int TabDrag::index() const {
  return from->indexOf(tab);
}

std::optional<TabDrag> TabDrag::of(const QMimeData& data) {
  if (!data.hasFormat(QLatin1String(kFormat)) || !dragged || dragged->from.isNull()) return std::nullopt;
  if (dragged->isPane && dragged->pane.isNull()) return std::nullopt;
  const TabDrag drag{.from = dragged->from, .tab = dragged->tab, .pane = dragged->pane};
  return drag.index() < 0 ? std::nullopt : std::optional(drag);
}

TabDropResult dragTab(const TabDrag& tab, const QPixmap& picture, QPoint hotSpot) {
  auto* data = new QMimeData;
  data->setData(QLatin1String(kFormat), QByteArray());
  auto* drag = new QDrag(tab.from);
  drag->setMimeData(data);
  drag->setPixmap(picture);
  drag->setHotSpot(hotSpot);
  dragged = Dragged{.from = tab.from, .tab = tab.tab, .pane = tab.pane, .isPane = tab.pane != nullptr};
  const EscapeWatch escape;
  const Qt::DropAction action = drag->exec(Qt::MoveAction);
  dragged.reset();
  if (action != Qt::IgnoreAction) return TabDropResult::Taken;
  return escape.wasPressed() ? TabDropResult::Cancelled : TabDropResult::Nowhere;
}

}  // namespace zolt
