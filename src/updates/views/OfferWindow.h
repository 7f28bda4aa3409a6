#pragma once

#include "updates/UpdateDriver.h"
#include "updates/views/NotesView.h"
#include "updates/views/UpdateWindow.h"

namespace zolt {

/// "A new version of Zolt is available!": what is offered, what is new in it, and the user's choice.
class OfferWindow : public UpdateWindow {
  Q_OBJECT

 public:
  OfferWindow(const UpdateOffer& offer, const QString& runningVersion, QWidget* parent = nullptr);

  /// The notes have come.
  void showNotes(const ReleaseNotes& notes) { m_notes->showNotes(notes); }

 Q_SIGNALS:
  void installChosen();
  /// For an update to be told of only.
  void pageChosen(const QUrl& page);
  void skipChosen();
  // "Remind Me Later" and closing are `rejected`.
  /// A link of the release notes was clicked.
  void linkClicked(const QUrl& page);

 private:
  NotesView* m_notes;
};

}  // namespace zolt
