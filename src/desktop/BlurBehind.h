#pragma once

#include <QObject>
#include <QWidget>

namespace zolt {

/// Asks the desktop to blur what shows through a window: on X11 with the property _KDE_NET_WM_BLUR_BEHIND_REGION, if
/// the compositor announces it on the root window, by a property of that name or in _NET_SUPPORTED. Elsewhere nothing
/// is asked. Main thread.
class BlurBehind : public QObject {
  Q_OBJECT

 public:
  /// `window` is a top-level one and must outlive this object.
  explicit BlurBehind(QWidget& window);

  /// From now on, also when the window gets another system window.
  void setWanted(bool wanted);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();

  QWidget& m_window;
  bool m_isWanted = false;
};

}  // namespace zolt
