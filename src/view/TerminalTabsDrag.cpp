// Panes that are dragged out of their splits by a grip.
#include <QCursor>
#include <QMouseEvent>
#include <QPixmap>
#include <algorithm>

#include "view/TerminalTabs.h"

namespace zolt {

namespace {

// So near to a pane's upper edge, and after so long a rest, it is the pane that the pointer is about.
constexpr int kEdge = 8;
constexpr std::chrono::milliseconds kRest{300};
// Of what is dragged, so much is shown at the pointer.
constexpr QSize kPicture(280, 180);

}  // namespace

void TerminalTabs::prepareGrip() {
  m_gripTimer.setSingleShot(true);
  m_gripTimer.setInterval(kRest);
  connect(&m_gripTimer, &QTimer::timeout, this, [this] {
    if (m_gripPane != nullptr) m_grip->showOn(QRect(m_gripPane->mapTo(this, QPoint()), m_gripPane->size()));
  });
  connect(m_grip, &PaneGrip::dragged, this, &TerminalTabs::dragPaneOut);
  connect(this, &TerminalTabs::arrangementChanged, this, [this] { offerGrip(nullptr); });
}

// Not while a button is pressed: that is a selection, or the program's.
void TerminalTabs::pointerMoved(TerminalPane& pane, const QMouseEvent& event) {
  const int y = pane.mapFromGlobal(event.globalPosition().toPoint()).y();
  const bool isOffered = event.buttons() == Qt::NoButton && y < kEdge && m_makePane &&
                         indexOf(pane) == currentIndex() && panesOf(currentIndex()).size() > 1 &&
                         view(currentIndex()).zoomed() == nullptr;
  offerGrip(isOffered ? &pane : nullptr);
}

void TerminalTabs::offerGrip(TerminalPane* pane) {
  if (pane == nullptr) {
    m_gripTimer.stop();
    m_grip->hide();
  } else if (m_grip->isHidden() || m_gripPane != pane) {
    m_grip->hide();
    m_gripTimer.start();
  }
  m_gripPane = pane;
}

void TerminalTabs::dragPaneOut() {
  const QPointer<TerminalPane> pane = m_gripPane;
  m_grip->hide();
  if (pane.isNull() || indexOf(*pane) < 0) return;
  const QPixmap picture =
      pane->grab().scaled(kPicture * devicePixelRatioF(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
  const QPoint hotSpot(static_cast<int>(picture.width() / picture.devicePixelRatio() / 2), 4);
  const QPointer<TerminalTabs> self(this);
  const TabDropResult result =
      dragTab({.from = m_strip, .tab = m_strip->idOf(indexOf(*pane)), .pane = pane}, picture, hotSpot);
  const bool isTornOff = result == TabDropResult::Nowhere && self && !pane.isNull() && indexOf(*pane) >= 0;
  if (!isTornOff || panesOf(indexOf(*pane)).size() == 1) return;
  const int index = indexOf(*pane) + 1;
  insertTab(tabOfPane(*pane), index);
  Q_EMIT windowWanted(index, QCursor::pos() - hotSpot);
}

DetachedTab TerminalTabs::tabOfPane(TerminalPane& pane) {
  TerminalPane& taken = *takePane(pane).pane.release();
  return {.view = std::make_unique<SplitView>(taken), .name = {}, .current = &taken};
}

}  // namespace zolt
