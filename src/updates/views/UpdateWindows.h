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

  /// Asks whether to check automatically; `answered` is called with the answer, unless another window comes first.
  void askForConsent(std::function<void(bool)> answered);
  /// Brings the window that is shown, if any, to the front.
  void raise();

 private:
  void followState();
  void show(UpdateWindow* window);
  void closeWindow();
  void showOffer();
  ProgressWindow* showProgress(const QString& title);
  void showMessage(const QString& title, const QString& sentence);

  UpdateDriver& m_driver;
  OpenPage m_openPage;
  QPointer<UpdateWindow> m_window;  // owned, of this moment's kind
};

}  // namespace zolt
