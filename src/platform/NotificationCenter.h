#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <string>
#include <vector>

namespace zolt {

/// Tells observers, by name, that something happened. Notifications carry no object and no data.
///
/// Main thread only. Observers are called in the order in which they were added, before `post` returns.
class NotificationCenter {
 public:
  static NotificationCenter& defaultCenter();

  /// Calls `handler` for each notification called `name`, for as long as `observer` lives.
  void addObserver(const QObject* observer, std::string name, std::function<void()> handler);
  void removeObserver(const QObject* observer);
  void post(const std::string& name);

 private:
  struct Observation {
    QPointer<const QObject> observer;
    std::string name;
    std::function<void()> handler;
  };

  std::vector<Observation> m_observations;
};

}  // namespace zolt
