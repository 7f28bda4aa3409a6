#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTcpServer>
#include <functional>
#include <optional>

class QTcpSocket;

namespace zolt::test {

/// The reply of a server to a request, well-behaved or not.
struct HttpReply {
  enum class Manner {
    Whole,   // the body, and closes the connection
    Silent,  // nothing, and stays connected
    Stalls,  // the head and the body, and stays connected
    Breaks,  // the head and half of the body, and closes the connection
    Drips,   // the body over and over, a byte every few milliseconds
    Floods,  // the body over and over, as fast as possible
  };

  int status = 200;
  QByteArray type = "application/octet-stream";
  QByteArray body{};
  QByteArray moreHeaders{};                 // complete lines
  bool announcesLength = true;              // Content-Length; never for Drips and Floods
  std::optional<qint64> announcedLength{};  // if it differs from that of the body
  Manner manner = Manner::Whole;
};

/// A web server on any port of 127.0.0.1, for one request per connection. Runs in the event loop of its thread.
class HttpServer : public QObject {
 public:
  /// The reply to a GET of a path, given without its query.
  using Handler = std::function<HttpReply(const QString& path)>;

  explicit HttpServer(Handler handler);

  quint16 port() const { return m_server.serverPort(); }
  /// The address of a path, which begins with "/".
  QString address(const QString& path) const;
  /// The requested paths, in order.
  const QStringList& requests() const { return m_requests; }
  /// The head of the last request.
  const QByteArray& lastHead() const { return m_lastHead; }
  /// Breaks every connection that is still open.
  void hangUp();

 private:
  void accept();
  void answer(QTcpSocket& connection, const QByteArray& head);

  Handler m_handler;
  QTcpServer m_server;
  QStringList m_requests;
  QByteArray m_lastHead;
};

}  // namespace zolt::test
