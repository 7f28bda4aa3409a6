#pragma once

#include <QBuffer>
#include <QObject>
#include <QUrl>

#include "updates/Fetch.h"
#include "updates/UpdateContext.h"

namespace zolt {

/// Fetches a feed or release notes into memory, within the limits for texts. Main thread.
class TextFetch : public QObject {
  Q_OBJECT

 public:
  TextFetch(UpdateContext& context, const QUrl& url, QObject* parent = nullptr);

  void start() { m_fetch.start(); }
  /// Ends the fetch at once, without a signal.
  void stop() { m_fetch.stop(); }

  /// After success.
  const QByteArray& content() const { return m_content.data(); }
  QString contentType() const { return m_fetch.contentType(); }

 Q_SIGNALS:
  /// Either of these, once, after `start`.
  void succeeded();
  void failed(zolt::FetchError error);

 private:
  QBuffer m_content;
  Fetch m_fetch;
};

}  // namespace zolt
