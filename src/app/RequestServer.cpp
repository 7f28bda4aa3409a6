#include "app/RequestServer.h"

#include <QTimer>
#include <utility>

#include "platform/LocalConnection.h"

namespace zolt {

RequestServer::RequestServer(Handler handler, Refusal refusal, const Limits& limits, QObject* parent)
    : QObject(parent), m_handler(std::move(handler)), m_refusal(std::move(refusal)), m_limits(limits) {
  m_server.setSocketOptions(QLocalServer::UserAccessOption);
  connect(&m_server, &QLocalServer::newConnection, this, &RequestServer::takeConnections);
}

bool RequestServer::listen(const std::string& path) {
  unlink(path.c_str());
  return m_server.listen(QString::fromStdString(path));
}

void RequestServer::takeConnections() {
  while (QLocalSocket* connection = m_server.nextPendingConnection()) {
    add(*connection);
  }
}

void RequestServer::add(QLocalSocket& connection) {
  // One byte more than may be, so that too much is seen.
  connection.setReadBufferSize(static_cast<qint64>(m_limits.requestBytes) + 1);
  connect(&connection, &QLocalSocket::disconnected, this, [this, gone = &connection] {
    std::erase(m_connections, gone);
    gone->deleteLater();
  });
  m_connections.push_back(&connection);
  if (peerUser(static_cast<int>(connection.socketDescriptor())) != m_limits.user) return connection.abort();
  connect(&connection, &QLocalSocket::readyRead, this, [this, &connection] { read(connection); });
  QTimer::singleShot(m_limits.time, &connection, &QLocalSocket::abort);
  // The oldest has had its time to speak; a client that only waits must not keep others out.
  if (m_connections.size() > m_limits.connections) turnAway(*m_connections.front(), "too many requests at a time");
  if (connection.bytesAvailable() > 0) read(connection);
}

void RequestServer::read(QLocalSocket& connection) {
  const auto limit = static_cast<qint64>(m_limits.requestBytes);
  if (!connection.canReadLine()) {
    if (connection.bytesAvailable() > limit) turnAway(connection, "the request is too large");
    return;
  }
  if (hasPeerLeft(static_cast<int>(connection.socketDescriptor()))) return connection.abort();
  const QByteArray line = connection.readLine();
  finish(connection, m_handler(std::string_view(line.constData(), static_cast<std::size_t>(line.size()) - 1)));
}

void RequestServer::finish(QLocalSocket& connection, const Answer& answer) {
  std::erase(m_connections, &connection);
  disconnect(&connection, &QLocalSocket::readyRead, this, nullptr);
  connection.write(answer.line.data(), static_cast<qint64>(answer.line.size()));
  const bool isSent = connection.flush() && connection.state() == QLocalSocket::ConnectedState;
  connection.disconnectFromServer();
  if (isSent && answer.whenSent) answer.whenSent();
}

void RequestServer::turnAway(QLocalSocket& connection, std::string_view reason) {
  finish(connection, {.line = m_refusal(reason)});
}

}  // namespace zolt
