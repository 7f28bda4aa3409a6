#pragma once

#include <QObject>
#include <QTimer>

#include "updates/UpdateContext.h"

namespace zolt {

/// Signals when a background check is due. Main thread.
class UpdateScheduler : public QObject {
  Q_OBJECT

 public:
  /// `context` must outlive the scheduler. Does nothing before `start`.
  explicit UpdateScheduler(UpdateContext& context, QObject* parent = nullptr);

  void start();
  /// Applies changed settings. Does nothing before `start`.
  void rearm();

 Q_SIGNALS:
  /// A check is due. Emitted again after a minute if none was started, for example because another one is running.
  void due();

 private:
  void arm(std::chrono::milliseconds delayWhenDue);
  void check();

  UpdateContext& m_context;
  QTimer m_timer;
  bool m_started = false;
};

}  // namespace zolt
