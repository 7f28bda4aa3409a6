#include "platform/NotificationCenter.h"

#include <algorithm>
#include <utility>

namespace zolt {

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

void NotificationCenter::addObserver(const QObject* observer, std::string name, std::function<void()> handler) {
  std::erase_if(m_observations, [](const Observation& each) { return !each.observer; });
  m_observations.push_back({.observer = observer, .name = std::move(name), .handler = std::move(handler)});
}

void NotificationCenter::removeObserver(const QObject* observer) {
  std::erase_if(m_observations, [&](const Observation& each) { return !each.observer || each.observer == observer; });
}

void NotificationCenter::post(const std::string& name) {
  // A copy: a handler may add and remove observers, itself included.
  const std::vector<Observation> observations = m_observations;
  const auto isObserving = [this](const Observation& asked) {
    return std::ranges::any_of(m_observations, [&](const Observation& each) {
      return each.observer == asked.observer && each.name == asked.name;
    });
  };
  for (const Observation& each : observations) {
    if (each.name == name && each.observer && isObserving(each)) each.handler();
  }
}

}  // namespace zolt
