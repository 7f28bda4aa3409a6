#include "updates/UpdateNetwork.h"

#include <QNetworkProxyFactory>

#include "updates/FetchAddress.h"

namespace zolt {

namespace {

// Plain http is allowed only to this machine itself, which a proxy would make another one.
class DirectToLoopback : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    if (isLoopback(query.url())) return {QNetworkProxy(QNetworkProxy::NoProxy)};
    return QNetworkProxyFactory::systemProxyForQuery(query);
  }
};

}  // namespace

QNetworkAccessManager& UpdateNetwork::manager() {
  if (!m_manager) {
    m_manager = std::make_unique<QNetworkAccessManager>();
    m_manager->setProxyFactory(new DirectToLoopback);
  }
  return *m_manager;
}

}  // namespace zolt
