#include "updates/views/OfferWindow.h"

#include "updates/views/UpdateTexts.h"

namespace zolt {

OfferWindow::OfferWindow(const UpdateOffer& offer, const QString& runningVersion, QWidget* parent)
    : UpdateWindow(tr("A new version of Zolt is available!"), offerText(offer.item, runningVersion), parent),
      m_notes(new NotesView(this)) {
  auto* heading = new QLabel(tr("Release Notes:"), this);
  heading->setBuddy(m_notes);
  content().addWidget(heading);
  content().addWidget(m_notes, 1);
  connect(m_notes, &NotesView::pageWanted, this, &OfferWindow::linkClicked);
  if (offer.notes) {
    showNotes(*offer.notes);
  } else {
    m_notes->showRemark(tr("Loading the release notes..."));
  }
  if (!offer.isCritical) {
    QPushButton* skip = addButtonAtStart(tr("Skip This Version"), QStringLiteral("skip"));
    connect(skip, &QPushButton::clicked, this, &OfferWindow::skipChosen);
  }
  QPushButton* later = addButton(tr("Remind Me Later"), QStringLiteral("remindLater"));
  connect(later, &QPushButton::clicked, this, &QDialog::reject);
  if (offer.item.informational) {
    QPushButton* more = addDefaultButton(tr("Learn More..."), QStringLiteral("learnMore"));
    connect(more, &QPushButton::clicked, this, [this, page = offer.item.link] { Q_EMIT pageChosen(page); });
  } else {
    QPushButton* install = addDefaultButton(tr("Install Update"), QStringLiteral("install"));
    connect(install, &QPushButton::clicked, this, &OfferWindow::installChosen);
  }
  finish(true);
}

}  // namespace zolt
