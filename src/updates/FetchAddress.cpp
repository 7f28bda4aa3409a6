#include "updates/FetchAddress.h"

#include <QHostAddress>

namespace zolt {

bool isLoopback(const QUrl& url) {
  if (url.host() == QLatin1String("localhost")) return true;
  const QHostAddress address(url.host());
  if (address.protocol() == QAbstractSocket::IPv4Protocol) return address.isInSubnet(QHostAddress(0x7F000000U), 8);
  return address == QHostAddress(QHostAddress::LocalHostIPv6);
}

bool mayFetch(const QUrl& url) {
  if (!url.isValid() || url.host().isEmpty()) return false;
  return url.scheme() == QLatin1String("https") || (url.scheme() == QLatin1String("http") && isLoopback(url));
}

bool mayRedirect(const QUrl& from, const QUrl& to) {
  return mayFetch(to) && (from.scheme() != QLatin1String("https") || to.scheme() == QLatin1String("https"));
}

}  // namespace zolt
