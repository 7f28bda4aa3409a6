#pragma once

#include "updates/views/UpdateWindow.h"

namespace zolt {

/// A title, a sentence and "OK".
class MessageWindow : public UpdateWindow {
  Q_OBJECT

 public:
  MessageWindow(const QString& title, const QString& sentence, QWidget* parent = nullptr);
};

/// "Check for updates automatically?". Closing it leaves the question unanswered.
class ConsentWindow : public UpdateWindow {
  Q_OBJECT

 public:
  explicit ConsentWindow(QWidget* parent = nullptr);

 Q_SIGNALS:
  void answered(bool wanted);
};

}  // namespace zolt
