#pragma once

#include <QObject>

namespace zolt {

/// What looks for updates, and shows that it does. Main thread.
class UpdaterBackend : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// A check by hand, which shows its interface.
  virtual void checkForUpdates() = 0;
  /// False while a check or an update is under way.
  virtual bool canCheckForUpdates() const = 0;

 Q_SIGNALS:
  void canCheckForUpdatesChanged();
};

}  // namespace zolt
