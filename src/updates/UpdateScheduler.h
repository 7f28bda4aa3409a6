#pragma once

#include <QObject>
#include <QTimer>

#include "updates/UpdateContext.h"

namespace zolt {

/// Tells when a background check is due. Main thread.
class UpdateScheduler : public QObject {
  Q_OBJECT

 public:
  /// `context` must outlive the scheduler, which waits for `start`.
  explicit UpdateScheduler(UpdateContext& context, QObject* parent = nullptr);

  void start();
  /// Looks at the settings anew; call it when one of those that decide has changed. Before the start: nothing.
  void rearm();

 Q_SIGNALS:
  /// A check is due. Emitted again after a minute when none was made, as while another one runs.
  void due();

 private:
  void arm(std::chrono::milliseconds delayWhenDue);
  void look();

  UpdateContext& m_context;
  QTimer m_timer;
  bool m_started = false;
};

}  // namespace zolt
