#pragma once

#include <QObject>
#include <utility>
#include <vector>

namespace zolt {

/// Sends actions by name to whoever can perform them: the widget with the keyboard and those around it, up to its
/// window; then the application's own responders, in their order.
///
/// A responder performs an action by a slot or invokable method of that name without parameters. Where it has an
/// invokable "validate" method, `bool validate(const QByteArray& action)`, that says whether it would now. Main thread.
class ActionChain {
 public:
  /// The responders must outlive the chain.
  explicit ActionChain(std::vector<QObject*> lastResponders) : m_lastResponders(std::move(lastResponders)) {}

  /// Whether a responder was found. The first one performs it and no other.
  bool sendAction(const char* action) const;
  /// Whether the action would find a responder that performs it now.
  bool isEnabled(const char* action) const;

 private:
  QObject* responderFor(const char* action) const;
  std::vector<QObject*> responders() const;

  std::vector<QObject*> m_lastResponders;
};

}  // namespace zolt
