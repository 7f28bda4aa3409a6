#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <functional>

#include "updates/UpdateDriver.h"
#include "updates/views/ProgressWindow.h"
#include "updates/views/UpdateWindow.h"

namespace zolt {

/// Shows the state of the driver, one window at a time, and passes the choices of the user on to it. Main thread.
class UpdateWindows : public QObject {
  Q_OBJECT

 public:
  using OpenPage = std::function<void(const QUrl& page)>;

  /// `driver` must outlive the windows.
  UpdateWindows(UpdateDriver& driver, OpenPage openPage, QObject* parent = nullptr);
  ~UpdateWindows() override;

  /// Asks whether to check automatically, unless a window is shown. Calls `answered` with the answer, but not if the
  /// question is closed without one.
  void askForConsent(std::function<void(bool)> answered);
  /// Brings the current window, if any, to the front.
  void raise();

 private:
  void followState();
  /// Whether the user asked for a window, or is busy with something else.
  enum class Requested { Yes, No };
  void show(UpdateWindow* window, Requested requested = Requested::Yes);
  void closeWindow();
  void showOffer();
  ProgressWindow* showProgress(const QString& title);
  void showMessage(const QString& title, const QString& sentence);

  UpdateDriver& m_driver;
  OpenPage m_openPage;
  QPointer<UpdateWindow> m_window;  // owned
};

}  // namespace zolt
