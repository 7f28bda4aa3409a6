#include "updates/views/UpdateWindows.h"

#include <QApplication>
#include <utility>

#include "updates/views/MessageWindow.h"
#include "updates/views/OfferWindow.h"
#include "updates/views/ProgressWindow.h"

namespace zolt {

using State = UpdateDriver::State;

UpdateWindows::UpdateWindows(UpdateDriver& driver, OpenPage openPage, QObject* parent)
    : QObject(parent), m_driver(driver), m_openPage(std::move(openPage)) {
  connect(&driver, &UpdateDriver::stateChanged, this, &UpdateWindows::followState);
  connect(&driver, &UpdateDriver::notesArrived, this, [this] {
    if (auto* offer = qobject_cast<OfferWindow*>(m_window.data())) offer->showNotes(*m_driver.offer().notes);
  });
  connect(&driver, &UpdateDriver::progressed, this, [this](std::int64_t received, std::int64_t total) {
    if (auto* progress = qobject_cast<ProgressWindow*>(m_window.data())) progress->showBytes(received, total);
  });
  connect(&driver, &UpdateDriver::foundNothingNew, this, [this] {
    showMessage(tr("You're up to date!"),
                tr("Zolt %1 is currently the newest version available.").arg(m_driver.environment().runningVersion));
  });
  connect(&driver, &UpdateDriver::failed, this,
          [this](const QString& sentence) { showMessage(tr("Update Error!"), sentence); });
}

UpdateWindows::~UpdateWindows() {
  if (m_window) m_window->disconnect(this);
  delete m_window.data();
}

void UpdateWindows::followState() {
  switch (m_driver.state()) {
    case State::Idle:
      return closeWindow();
    case State::Checking:
      if (m_driver.kind() == CheckKind::ByHand) showProgress(tr("Checking for updates..."));
      return;
    case State::Offering:
      return showOffer();
    case State::Downloading:
      // Shows "0 bytes" from the start, so that the window keeps its size.
      return showProgress(tr("Downloading update..."))->showBytes(0, 0);
    case State::Verifying:
      if (auto* progress = qobject_cast<ProgressWindow*>(m_window.data()))
        progress->showBusy(tr("Verifying update..."));
      return;
  }
}

// Deletes the window later, since it may be the sender of the current signal.
void UpdateWindows::closeWindow() {
  UpdateWindow* window = m_window.data();
  if (!window) return;
  m_window.clear();
  window->disconnect(this);
  window->hide();
  window->deleteLater();
}

void UpdateWindows::show(UpdateWindow* window, Requested requested) {
  closeWindow();
  m_window = window;
  if (requested == Requested::Yes) {
    window->show();
    raise();
  } else {
    // The user may be typing into another window.
    window->appearUnrequested();
    window->show();
    QApplication::alert(window);
  }
}

void UpdateWindows::raise() {
  if (!m_window) return;
  m_window->raise();
  m_window->activateWindow();
}

void UpdateWindows::showOffer() {
  auto* window = new OfferWindow(m_driver.offer(), m_driver.environment().runningVersion);
  connect(window, &OfferWindow::installChosen, &m_driver, &UpdateDriver::install);
  connect(window, &OfferWindow::skipChosen, &m_driver, &UpdateDriver::skip);
  connect(window, &QDialog::rejected, &m_driver, &UpdateDriver::remindLater);
  connect(window, &OfferWindow::linkClicked, this, [this](const QUrl& page) { m_openPage(page); });
  connect(window, &OfferWindow::pageChosen, this, [this](const QUrl& page) {
    m_openPage(page);
    m_driver.remindLater();
  });
  show(window, m_driver.kind() == CheckKind::Background ? Requested::No : Requested::Yes);
}

ProgressWindow* UpdateWindows::showProgress(const QString& title) {
  auto* window = new ProgressWindow(title);
  connect(window, &QDialog::rejected, &m_driver, &UpdateDriver::cancel);
  show(window);
  return window;
}

void UpdateWindows::showMessage(const QString& title, const QString& sentence) {
  auto* window = new MessageWindow(title, sentence);
  connect(window, &QDialog::finished, this, &UpdateWindows::closeWindow);
  show(window);
}

void UpdateWindows::askForConsent(std::function<void(bool)> answered) {
  if (m_window) return;
  auto* window = new ConsentWindow;
  connect(window, &ConsentWindow::answered, this, answered);
  connect(window, &QDialog::finished, this, &UpdateWindows::closeWindow);
  show(window, Requested::No);
}

}  // namespace zolt
