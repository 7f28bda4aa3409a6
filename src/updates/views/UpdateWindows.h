#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <functional>

#include "updates/UpdateDriver.h"
#include "updates/views/ProgressWindow.h"
#include "updates/views/UpdateWindow.h"

namespace zolt {

/// Shows what the driver does, one window at a time, and tells it what the user chose. Main thread.
class UpdateWindows : public QObject {
  Q_OBJECT

 public:
  using OpenPage = std::function<void(const QUrl& page)>;

  /// `driver` must outlive the windows.
  UpdateWindows(UpdateDriver& driver, OpenPage openPage, QObject* parent = nullptr);
  ~UpdateWindows() override;

  /// Asks whether to check automatically, unless a window is shown; `answered` is called with the answer. Closing the
  /// question is none.
  void askForConsent(std::function<void(bool)> answered);
  /// Brings the window that is shown, if any, to the front.
  void raise();

 private:
  void followState();
  /// Whether the user is waiting for a window, or is busy with something else.
  enum class Called { Yes, No };
  void show(UpdateWindow* window, Called called = Called::Yes);
  void closeWindow();
  void showOffer();
  ProgressWindow* showProgress(const QString& title);
  void showMessage(const QString& title, const QString& sentence);

  UpdateDriver& m_driver;
  OpenPage m_openPage;
  QPointer<UpdateWindow> m_window;  // owned, of this moment's kind
};

}  // namespace zolt
