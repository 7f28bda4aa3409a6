#pragma once

#include <QMimeData>
#include <QPoint>
#include <QWidget>
#include <cstdint>
#include <optional>

namespace zolt {

class TabStrip;

/// A tab, or one pane of it, that is being dragged. It never leaves this process: another one refuses it. Main thread.
struct TabDrag {
  TabStrip* from = nullptr;
  std::uint64_t tab = 0;    ///< as `TabStrip::idOf` tells
  QWidget* pane = nullptr;  ///< null: all of the tab

  /// Where in its strip the tab is now; -1 if it is gone.
  int index() const;
  /// The tab that `data` stands for, if it is dragged just now.
  static std::optional<TabDrag> of(const QMimeData& data);
};

enum class TabDropResult { Taken, Nowhere, Cancelled };

/// Lets the user drag it until it is dropped. Returns when that has happened. What takes it accepts the drop and
/// takes the tab out of its strip.
TabDropResult dragTab(const TabDrag& tab, const QPixmap& picture, QPoint hotSpot);

}  // namespace zolt
