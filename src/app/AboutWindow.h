#pragma once

#include <QWidget>

namespace zolt {

/// Name, version and picture of the application. Escape closes it.
class AboutWindow : public QWidget {
  Q_OBJECT

 public:
  AboutWindow();
};

}  // namespace zolt
