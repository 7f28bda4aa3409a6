#pragma once

#include <QMimeData>
#include <QPoint>
#include <optional>

namespace zolt {

class TabStrip;

/// A tab that is being dragged out of its strip. It never leaves this process: another one refuses it. Main thread.
struct TabDrag {
  TabStrip* from = nullptr;
  int index = 0;

  /// The tab that `data` stands for, if it is dragged just now.
  static std::optional<TabDrag> of(const QMimeData& data);
};

enum class TabDropResult { Taken, Nowhere };

/// Lets the user drag a tab of `from` until it is dropped. Returns when that has happened. What takes it accepts the
/// drop and takes the tab out of its strip.
TabDropResult dragTab(TabStrip& from, int index, const QPixmap& picture, QPoint hotSpot);

}  // namespace zolt
