#pragma once

#include "updates/views/UpdateWindow.h"

namespace zolt {

/// A title, a sentence and "OK".
class MessageWindow : public UpdateWindow {
  Q_OBJECT

 public:
  MessageWindow(const QString& title, const QString& sentence, QWidget* parent = nullptr);
};

/// "Check for updates automatically?": accepted is yes; everything else, closing included, no.
class ConsentWindow : public UpdateWindow {
  Q_OBJECT

 public:
  explicit ConsentWindow(QWidget* parent = nullptr);
};

}  // namespace zolt
