#include "updates/TextFetch.h"

namespace zolt {

TextFetch::TextFetch(UpdateContext& context, const QUrl& url, QObject* parent)
    : QObject(parent),
      m_fetch(context.network.manager(),
              {.url = url,
               .maximumBytes = context.environment.maximumTextBytes,
               .exactBytes = std::nullopt,
               .idleLimit = context.environment.idleLimit,
               .limit = context.environment.textLimit},
              m_content) {
  m_content.open(QIODevice::WriteOnly);
  connect(&m_fetch, &Fetch::succeeded, this, &TextFetch::succeeded);
  connect(&m_fetch, &Fetch::failed, this, &TextFetch::failed);
}

}  // namespace zolt
