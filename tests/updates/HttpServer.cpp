#include "updates/HttpServer.h"

#include <QTcpSocket>
#include <QTimer>
#include <QUrl>
#include <memory>
#include <utility>

namespace zolt::test {

namespace {

using Manner = HttpReply::Manner;

constexpr qint64 kFloodAhead = 256 * 1024;
constexpr std::chrono::milliseconds kDripInterval{10};

bool isEndless(Manner manner) {
  return manner == Manner::Drips || manner == Manner::Floods;
}

QByteArray headOf(const HttpReply& reply) {
  QByteArray head = "HTTP/1.1 " + QByteArray::number(reply.status) +
                    " Status\r\nConnection: close\r\nContent-Type: " + reply.type + "\r\n" + reply.moreHeaders;
  if (reply.announcesLength && !isEndless(reply.manner)) {
    head += "Content-Length: " + QByteArray::number(reply.announcedLength.value_or(reply.body.size())) + "\r\n";
  }
  return head + "\r\n";
}

void flood(QTcpSocket& connection, const QByteArray& body) {
  while (connection.state() == QAbstractSocket::ConnectedState && connection.bytesToWrite() < kFloodAhead) {
    connection.write(body);
  }
}

void send(QTcpSocket& connection, const HttpReply& reply) {
  if (reply.manner == Manner::Silent) return;
  connection.write(headOf(reply));
  switch (reply.manner) {
    case Manner::Silent:
      break;
    case Manner::Whole:
      connection.write(reply.body);
      connection.disconnectFromHost();
      break;
    case Manner::Stalls:
      connection.write(reply.body);
      break;
    case Manner::Breaks:
      connection.write(reply.body.first(reply.body.size() / 2));
      connection.disconnectFromHost();
      break;
    case Manner::Drips: {
      auto* timer = new QTimer(&connection);
      QObject::connect(timer, &QTimer::timeout, &connection, [&connection, body = reply.body, at = 0]() mutable {
        connection.write(body.sliced(at++ % body.size(), 1));
      });
      timer->start(kDripInterval);
      break;
    }
    case Manner::Floods:
      QObject::connect(&connection, &QTcpSocket::bytesWritten, &connection,
                       [&connection, body = reply.body] { flood(connection, body); });
      flood(connection, reply.body);
      break;
  }
}

}  // namespace

HttpServer::HttpServer(Handler handler) : m_handler(std::move(handler)) {
  connect(&m_server, &QTcpServer::newConnection, this, &HttpServer::accept);
  m_server.listen(QHostAddress::LocalHost);
}

QString HttpServer::address(const QString& path) const {
  return QStringLiteral("http://127.0.0.1:%1%2").arg(port()).arg(path);
}

void HttpServer::hangUp() {
  for (QTcpSocket* connection : m_server.findChildren<QTcpSocket*>()) {
    connection->abort();
  }
}

void HttpServer::accept() {
  while (QTcpSocket* connection = m_server.nextPendingConnection()) {
    connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
    connect(connection, &QTcpSocket::readyRead, this, [this, connection, head = QByteArray()]() mutable {
      head += connection->readAll();
      if (!head.startsWith('G')) return connection->abort();
      if (!head.contains("\r\n\r\n")) return;
      answer(*connection, std::exchange(head, {}));
    });
  }
}

void HttpServer::answer(QTcpSocket& connection, const QByteArray& head) {
  const QByteArray target = head.left(head.indexOf("\r\n")).split(' ').value(1);
  const QString path = QUrl::fromEncoded(target).path();
  m_requests.append(path);
  m_lastHead = head;
  send(connection, m_handler(path));
}

}  // namespace zolt::test
