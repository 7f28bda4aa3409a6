#pragma once

#include <QProgressBar>
#include <cstdint>

#include "updates/views/UpdateWindow.h"

namespace zolt {

/// A progress bar and "Cancel", which rejects the window.
class ProgressWindow : public UpdateWindow {
  Q_OBJECT

 public:
  explicit ProgressWindow(const QString& title, QWidget* parent = nullptr);

  /// Shows activity of unknown duration.
  void showBusy(const QString& title);
  /// Shows the progress of a download; `totalBytes` is 0 if unknown.
  void showBytes(std::int64_t receivedBytes, std::int64_t totalBytes);

 private:
  QProgressBar* m_bar;
};

}  // namespace zolt
