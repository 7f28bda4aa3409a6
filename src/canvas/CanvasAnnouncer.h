#pragma once

#include <QAccessible>

#include "canvas/TextAnnouncer.h"

namespace zolt {

class TextCanvas;

/// Tells screen readers how the text of a canvas changes, and does nothing while there are none. Main thread.
class CanvasAnnouncer : public QAccessible::ActivationObserver {
 public:
  /// `canvas` must outlive it.
  CanvasAnnouncer(TextCanvas& canvas, Clock& clock);
  ~CanvasAnnouncer() override;
  Q_DISABLE_COPY_MOVE(CanvasAnnouncer)

  /// To be called for each frame that differs from the one before.
  void frameChanged() { m_announcer.update(); }

  void accessibilityActiveChanged(bool active) override;

 private:
  TextAnnouncer m_announcer;
};

}  // namespace zolt
