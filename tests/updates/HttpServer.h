#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTcpServer>
#include <functional>
#include <optional>

class QTcpSocket;

namespace zolt::test {

/// What a server says to a request, well-behaved or not.
struct HttpReply {
  enum class Manner {
    Whole,   // the body, and the end
    Silent,  // nothing at all
    Stalls,  // the head and the body, and no end
    Breaks,  // the head and half of the body, and the end
    Drips,   // a byte of the body every few milliseconds, over and over, without end
    Floods,  // the body over and over, without end, as fast as it goes
  };

  int status = 200;
  QByteArray type = "application/octet-stream";
  QByteArray body{};
  QByteArray moreHeaders{};                 // whole lines
  bool announcesLength = true;              // Content-Length; Drips and Floods never do
  std::optional<qint64> announcedLength{};  // when it is not that of the body
  Manner manner = Manner::Whole;
};

/// A web server on 127.0.0.1, at any port, one request a connection. Runs in the event loop of its thread.
class HttpServer : public QObject {
 public:
  /// What to say to a GET of a path; a query is not part of it.
  using Handler = std::function<HttpReply(const QString& path)>;

  explicit HttpServer(Handler handler);

  quint16 port() const { return m_server.serverPort(); }
  /// The address of a path that begins with "/".
  QString address(const QString& path) const;
  /// Paths that were asked for, in their order.
  const QStringList& requests() const { return m_requests; }
  /// The last request's head.
  const QByteArray& lastHead() const { return m_lastHead; }

 private:
  void accept();
  void answer(QTcpSocket& connection, const QByteArray& head);

  Handler m_handler;
  QTcpServer m_server;
  QStringList m_requests;
  QByteArray m_lastHead;
};

}  // namespace zolt::test
