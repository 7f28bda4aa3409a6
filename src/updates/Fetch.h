#pragma once

#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QUrl>
#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

#include "platform/Clock.h"

namespace zolt {

/// Why a fetch failed.
enum class FetchError {
  NotSecure,
  RedirectedWeaker,
  RedirectedTooOften,
  Unreachable,   // no connection, or a broken one
  NotDelivered,  // an HTTP status other than 200
  TimedOut,
  TooLarge,
  LengthDiffers,
  Empty,
  NotSaved,
};

/// What to fetch, and the limits of size and time.
struct FetchRequest {
  QUrl url;
  std::int64_t maximumBytes = 0;
  std::optional<std::int64_t> exactBytes;            // the content must have this length; at most maximumBytes
  std::chrono::milliseconds idleLimit{0};            // without data
  std::optional<std::chrono::milliseconds> limit{};  // in total
};

/// One bounded download, over https or from this machine itself. Main thread.
///
/// Sends no cookies or credentials, follows at most 5 redirects, and fails as soon as it is clear that the content is
/// not acceptable. The content is written to `sink`, which is open for writing, as it arrives, and never more of it
/// than `maximumBytes` or `exactBytes`. After `start`, either `succeeded` or `failed` is emitted, once and last;
/// destroying the object ends the download without either.
class Fetch : public QObject {
  Q_OBJECT

 public:
  /// `network`, `sink` and `clock` must outlive the fetch.
  Fetch(QNetworkAccessManager& network, FetchRequest request, QIODevice& sink, QObject* parent = nullptr,
        Clock& clock = Clock::steady());
  ~Fetch() override;

  void start();
  /// Ends the download at once, without a signal.
  void stop();

  /// The media type given by the server, with its parameters; after success.
  QString contentType() const { return m_contentType; }

 Q_SIGNALS:
  void progressed(std::int64_t receivedBytes);
  void succeeded();
  void failed(zolt::FetchError error);

 private:
  void open(const QUrl& url);
  void dropReply();
  void fail(FetchError error);
  void takeHeaders();
  void takeData();
  void takeEnd();
  void redirect(const QUrl& url);

  QNetworkAccessManager& m_network;
  FetchRequest m_request;
  QIODevice& m_sink;
  QNetworkReply* m_reply = nullptr;
  std::unique_ptr<Timer> m_idle;
  std::unique_ptr<Timer> m_total;
  QString m_contentType;
  std::int64_t m_received = 0;
  std::optional<std::int64_t> m_announced;
  int m_redirects = 0;
  bool m_isOver = false;
  bool m_accepted = false;  // the headers have been checked
};

}  // namespace zolt
