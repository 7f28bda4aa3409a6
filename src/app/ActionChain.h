#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <utility>
#include <vector>

namespace zolt {

/// Sends actions by name along the responder chain: the widget with the focus and its parents up to the window, then
/// that window's own responder, then the application's own responders, in order.
///
/// A responder performs an action with a slot or invokable method of that name without parameters. If it also has an
/// invokable `bool validate(const QByteArray& action)`, that says whether the action is available now; and an invokable
/// `bool isOn(const QByteArray& action)`, whether what it turns on and off is on. Main thread.
class ActionChain {
 public:
  /// What responds for a window wherever in it the focus is; null: nothing.
  using WindowResponder = std::function<QObject*(QWidget& window)>;
  /// The responders must outlive the chain.
  explicit ActionChain(std::vector<QObject*> lastResponders, WindowResponder windowResponder = {})
      : m_lastResponders(std::move(lastResponders)), m_windowResponder(std::move(windowResponder)) {}

  /// Only the first responder found performs the action. Returns whether there was one.
  bool sendAction(const char* action) const;
  /// Whether some responder would perform the action now.
  bool isEnabled(const char* action) const;
  /// Whether what the action turns on and off is on.
  bool isOn(const char* action) const;

 private:
  QObject* responderFor(const char* action) const;
  bool answer(const char* question, const char* action, bool otherwise) const;
  std::vector<QObject*> responders() const;

  std::vector<QObject*> m_lastResponders;
  WindowResponder m_windowResponder;
};

}  // namespace zolt
