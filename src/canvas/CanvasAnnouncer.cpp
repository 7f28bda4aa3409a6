#include "canvas/CanvasAnnouncer.h"

#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

TextAnnouncer::State stateOf(const TextCanvas& canvas) {
  const TextInView view = canvas.textInView();
  return {.rows = view.rowTexts(), .caret = canvas.caretIn(view), .selection = canvas.selectionIn(view)};
}

void send(QAccessibleEvent&& event) {
  QAccessible::updateAccessibility(&event);
}

void tellChange(TextCanvas& canvas, const TextChange& change) {
  if (change.removed.isEmpty()) {
    send(QAccessibleTextInsertEvent(&canvas, change.at, change.inserted));
  } else if (change.inserted.isEmpty()) {
    send(QAccessibleTextRemoveEvent(&canvas, change.at, change.removed));
  } else {
    send(QAccessibleTextUpdateEvent(&canvas, change.at, change.removed, change.inserted));
  }
}

}  // namespace

CanvasAnnouncer::CanvasAnnouncer(TextCanvas& canvas, Clock& clock)
    : m_announcer({.read = [&canvas] { return stateOf(canvas); },
                   .textChanged = [&canvas](const TextChange& change) { tellChange(canvas, change); },
                   .caretMoved = [&canvas](int caret) { send(QAccessibleTextCursorEvent(&canvas, caret)); },
                   .selectionChanged =
                       [&canvas](const std::vector<OffsetRange>& selection) {
                         const OffsetRange first =
                             selection.empty() ? OffsetRange{.begin = -1, .end = -1} : selection.front();
                         send(QAccessibleTextSelectionEvent(&canvas, first.begin, first.end));
                       }},
                  clock) {
  QAccessible::installActivationObserver(this);
  if (QAccessible::isActive()) m_announcer.start();
}

CanvasAnnouncer::~CanvasAnnouncer() {
  QAccessible::removeActivationObserver(this);
}

void CanvasAnnouncer::accessibilityActiveChanged(bool active) {
  active ? m_announcer.start() : m_announcer.stop();
}

}  // namespace zolt
