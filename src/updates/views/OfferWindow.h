#pragma once

#include "updates/UpdateDriver.h"
#include "updates/views/NotesView.h"
#include "updates/views/UpdateWindow.h"

namespace zolt {

/// "A new version of Zolt is available!": the version, its release notes, and the choices of the user.
class OfferWindow : public UpdateWindow {
  Q_OBJECT

 public:
  OfferWindow(const UpdateOffer& offer, const QString& runningVersion, QWidget* parent = nullptr);

  /// Shows the release notes when they arrive.
  void showNotes(const ReleaseNotes& notes) { m_notes->showNotes(notes); }

 Q_SIGNALS:
  void installChosen();
  /// For an informational update.
  void pageChosen(const QUrl& page);
  void skipChosen();
  // "Remind Me Later" and closing the window emit `rejected`.
  /// A link of the release notes was clicked.
  void linkClicked(const QUrl& page);

 private:
  NotesView* m_notes;
};

}  // namespace zolt
