#pragma once

#include <unistd.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

namespace zolt {

/// Answers requests on a local socket: one line each, with one line for an answer, and a connection for each pair.
///
/// Whoever connects may be anything: it is given a moment to say its line, and as long to read the answer; too much of
/// it, too many at a time, and processes of other users are turned away. Main thread.
class RequestServer : public QObject {
  Q_OBJECT

 public:
  struct Answer {
    std::string line;                  ///< with its newline
    std::function<void()> whenSent{};  ///< called if the client was still there to take the line
  };
  /// Called for each line, without its newline, whose sender is still there.
  using Handler = std::function<Answer(std::string_view line)>;
  /// The line that turns a client away for a reason.
  using Refusal = std::function<std::string(std::string_view reason)>;

  struct Limits {
    std::chrono::milliseconds time{5000};  ///< for a connection as a whole
    std::size_t requestBytes = 0;          ///< with the newline
    std::size_t connections = 128;         ///< at a time; one more, and the oldest is turned away
    uid_t user = getuid();                 ///< whose processes are answered
  };

  RequestServer(Handler handler, Refusal refusal, const Limits& limits, QObject* parent = nullptr);

  /// Replaces what is at `path`. Only the user may connect. False if the socket cannot be made.
  bool listen(const std::string& path);
  /// Those that have not been answered yet.
  std::size_t connections() const { return m_connections.size(); }

 private:
  void takeConnections();
  void add(QLocalSocket& connection);
  void read(QLocalSocket& connection);
  void finish(QLocalSocket& connection, const Answer& answer);
  void turnAway(QLocalSocket& connection, std::string_view reason);

  Handler m_handler;
  Refusal m_refusal;
  Limits m_limits;
  std::deque<QLocalSocket*> m_connections;  // that have not been answered yet, the oldest first
  QLocalServer m_server{this};              // owns them
};

}  // namespace zolt
