#pragma once

#include <QNetworkAccessManager>
#include <memory>

namespace zolt {

/// The network of updates, made when it is first used: a program start must not pay for it. Main thread.
///
/// Connections to this machine itself go to it directly, whatever proxy is configured; all others as configured.
class UpdateNetwork {
 public:
  QNetworkAccessManager& manager();

 private:
  std::unique_ptr<QNetworkAccessManager> m_manager;
};

}  // namespace zolt
