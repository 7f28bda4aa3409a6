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

bool ActionChain::isEnabled(const char* action) const {
  QObject* responder = responderFor(action);
  if (responder == nullptr) return false;
  bool enabled = true;
  const QMetaObject* type = responder->metaObject();
  const int validate = type->indexOfMethod("validate(QByteArray)");
  if (validate >= 0) {
    type->method(validate).invoke(responder, Qt::DirectConnection, Q_RETURN_ARG(bool, enabled),
                                  Q_ARG(QByteArray, QByteArray(action)));
  }
  return enabled;
}

}  // namespace zolt
