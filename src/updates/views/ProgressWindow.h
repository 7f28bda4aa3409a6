#pragma once

#include <QProgressBar>
#include <cstdint>

#include "updates/views/UpdateWindow.h"

namespace zolt {

/// A bar that fills or just moves, and "Cancel", which rejects the window.
class ProgressWindow : public UpdateWindow {
  Q_OBJECT

 public:
  explicit ProgressWindow(const QString& title, QWidget* parent = nullptr);

  /// Something is being done, nobody knows how long.
  void showBusy(const QString& title);
  /// Bytes of a download; `totalBytes` is 0 when unknown.
  void showBytes(std::int64_t receivedBytes, std::int64_t totalBytes);

 private:
  QProgressBar* m_bar;
};

}  // namespace zolt
