#pragma once

#include <QObject>

namespace zolt {

/// An update service with its user interface. Main thread.
class UpdaterBackend : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// Checks at the request of the user, showing the progress.
  virtual void checkForUpdates() = 0;
  /// False during a check or an update.
  virtual bool canCheckForUpdates() const = 0;

 Q_SIGNALS:
  void canCheckForUpdatesChanged();
};

}  // namespace zolt
