#pragma once

#include <QObject>

namespace zolt {

/// What the colour scheme "System" amounts to now: dark or light, as the application's palette, which a
/// `DesktopPalette` keeps in step with the desktop. Create it after the QApplication. Main thread.
class SystemScheme : public QObject {
  Q_OBJECT

 public:
  explicit SystemScheme(QObject* parent = nullptr);

  bool isDark() const { return m_isDark; }

 Q_SIGNALS:
  void changed(bool isDark);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool m_isDark;
};

}  // namespace zolt
