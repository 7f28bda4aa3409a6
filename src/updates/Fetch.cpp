#include "updates/Fetch.h"

#include <QNetworkRequest>
#include <QTimer>
#include <algorithm>
#include <array>
#include <utility>

#include "updates/FetchAddress.h"

namespace zolt {

namespace {

constexpr int kMaxRedirects = 5;
constexpr std::int64_t kBufferBytes = 1 << 20;
constexpr int kStatusOk = 200;
constexpr std::array kRedirectStatuses{301, 302, 303, 307, 308};

QNetworkRequest requestFor(const QUrl& url) {
  QNetworkRequest request(url);
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
  request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
  // Compressed content would be unpacked before its size is checked.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("Zolt/" ZOLT_VERSION));
  return request;
}

}  // namespace

Fetch::Fetch(QNetworkAccessManager& network, FetchRequest request, QIODevice& sink, QObject* parent, Clock& clock)
    : QObject(parent),
      m_network(network),
      m_request(std::move(request)),
      m_sink(sink),
      m_idle(clock.makeTimer([this] { fail(FetchError::TimedOut); })),
      m_total(clock.makeTimer([this] { fail(FetchError::TimedOut); })) {}

Fetch::~Fetch() {
  stop();
}

void Fetch::start() {
  if (!mayFetch(m_request.url)) {
    // From the event loop, like every other failure.
    QTimer::singleShot(0, this, [this] { fail(FetchError::NotSecure); });
    return;
  }
  if (m_request.limit) m_total->start(*m_request.limit);
  open(m_request.url);
}

void Fetch::open(const QUrl& url) {
  m_idle->start(m_request.idleLimit);
  m_reply = m_network.get(requestFor(url));
  m_reply->setReadBufferSize(kBufferBytes);
  connect(m_reply, &QNetworkReply::metaDataChanged, this, &Fetch::takeHeaders);
  connect(m_reply, &QNetworkReply::readyRead, this, &Fetch::takeData);
  connect(m_reply, &QNetworkReply::finished, this, &Fetch::takeEnd);
}

void Fetch::stop() {
  m_isOver = true;
  m_idle->stop();
  m_total->stop();
  dropReply();
}

void Fetch::dropReply() {
  QNetworkReply* reply = std::exchange(m_reply, nullptr);
  if (!reply) return;
  reply->disconnect(this);
  // Deleting the reply ends the request. abort() would emit signals, possibly within one of its own.
  reply->deleteLater();
}

void Fetch::fail(FetchError error) {
  if (m_isOver) return;
  stop();
  Q_EMIT failed(error);
}

void Fetch::takeHeaders() {
  if (m_accepted) return;
  const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (status == 0) return;
  const QByteArray location = m_reply->rawHeader("Location");
  if (std::ranges::find(kRedirectStatuses, status) != kRedirectStatuses.end() && !location.isEmpty()) {
    return redirect(m_reply->url().resolved(QUrl::fromEncoded(location)));
  }
  if (status != kStatusOk) return fail(FetchError::NotDelivered);
  bool isNumber = false;
  const std::int64_t announced = m_reply->rawHeader("Content-Length").trimmed().toLongLong(&isNumber);
  if (isNumber) {
    m_announced = announced;
    if (announced > m_request.maximumBytes) return fail(FetchError::TooLarge);
    if (m_request.exactBytes && announced != *m_request.exactBytes) return fail(FetchError::LengthDiffers);
  }
  m_contentType = QString::fromLatin1(m_reply->rawHeader("Content-Type"));
  m_accepted = true;
}

void Fetch::redirect(const QUrl& url) {
  if (++m_redirects > kMaxRedirects) return fail(FetchError::RedirectedTooOften);
  if (!mayRedirect(m_reply->url(), url)) return fail(FetchError::RedirectedWeaker);
  dropReply();
  open(url);
}

void Fetch::takeData() {
  takeHeaders();
  if (!m_reply || !m_accepted) return;
  const QByteArray data = m_reply->readAll();
  if (data.isEmpty()) return;
  m_idle->start(m_request.idleLimit);
  m_received += data.size();
  if (m_request.exactBytes && m_received > *m_request.exactBytes) return fail(FetchError::LengthDiffers);
  if (m_received > m_request.maximumBytes) return fail(FetchError::TooLarge);
  if (m_sink.write(data) != data.size()) return fail(FetchError::NotSaved);
  Q_EMIT progressed(m_received);
}

void Fetch::takeEnd() {
  // After a redirect, the reply that finished is no longer the current one.
  QNetworkReply* ended = m_reply;
  takeData();
  if (!m_reply || m_reply != ended) return;
  if (!m_accepted || m_reply->error() != QNetworkReply::NoError) return fail(FetchError::Unreachable);
  if (m_announced && m_received != *m_announced) return fail(FetchError::Unreachable);
  if (m_received == 0) return fail(FetchError::Empty);
  if (m_request.exactBytes && m_received != *m_request.exactBytes) return fail(FetchError::LengthDiffers);
  stop();
  Q_EMIT succeeded();
}

}  // namespace zolt
