#include "app/ActionChain.h"

#include <QApplication>
#include <QMetaMethod>
#include <QWidget>

namespace zolt {

namespace {

int methodOf(const QObject& responder, const char* action) {
  return responder.metaObject()->indexOfMethod((QByteArray(action) + "()").constData());
}

}  // namespace

std::vector<QObject*> ActionChain::responders() const {
  std::vector<QObject*> chain;
  QWidget* first = QApplication::focusWidget();
  if (first == nullptr) first = QApplication::activeWindow();
  for (QWidget* each = first; each != nullptr; each = each->isWindow() ? nullptr : each->parentWidget()) {
    chain.push_back(each);
  }
  if (first != nullptr && m_windowResponder) {
    if (QObject* further = m_windowResponder(*first->window())) chain.push_back(further);
  }
  chain.insert(chain.end(), m_lastResponders.begin(), m_lastResponders.end());
  return chain;
}

QObject* ActionChain::responderFor(const char* action) const {
  for (QObject* each : responders()) {
    if (methodOf(*each, action) >= 0) return each;
  }
  return nullptr;
}

bool ActionChain::sendAction(const char* action) const {
  QObject* responder = responderFor(action);
  if (responder == nullptr) return false;
  return responder->metaObject()->method(methodOf(*responder, action)).invoke(responder, Qt::DirectConnection);
}

// What the action's responder answers to a question; `otherwise` if it has no such method.
bool ActionChain::answer(const char* question, const char* action, bool otherwise) const {
  QObject* responder = responderFor(action);
  if (responder == nullptr) return false;
  bool answer = otherwise;
  const QMetaObject* type = responder->metaObject();
  const int method = type->indexOfMethod((QByteArray(question) + "(QByteArray)").constData());
  if (method >= 0) {
    type->method(method).invoke(responder, Qt::DirectConnection, Q_RETURN_ARG(bool, answer),
                                Q_ARG(QByteArray, QByteArray(action)));
  }
  return answer;
}

bool ActionChain::isEnabled(const char* action) const {
  return answer("validate", action, true);
}

bool ActionChain::isOn(const char* action) const {
  return answer("isOn", action, false);
}

}  // namespace zolt
