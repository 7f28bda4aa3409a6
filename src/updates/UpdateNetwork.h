#pragma once

#include <QNetworkAccessManager>
#include <memory>

namespace zolt {

/// Network access for updates, created on first use so that it does not delay the start of the program. Main thread.
///
/// Connections to this machine itself never use a proxy; all others use the one that is configured.
class UpdateNetwork {
 public:
  QNetworkAccessManager& manager();

 private:
  std::unique_ptr<QNetworkAccessManager> m_manager;
};

}  // namespace zolt
