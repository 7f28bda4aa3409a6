#include "view/TerminalTextView.h"

#include "platform/MainQueue.h"
#include "text/GraphemeClusters.h"

namespace zolt {

std::unique_ptr<TerminalTextView::Coordinator> TerminalTextView::makeCoordinator() const {
  return std::make_unique<Coordinator>();
}

TerminalNSTextView* TerminalTextView::makeNSView(Coordinator& coordinator, QWidget* parent) const {
  auto* view = new TerminalNSTextView(parent);
  view->terminal = m_terminal;
  coordinator.textView = view;
  coordinator.terminal = m_terminal;
  QObject::connect(view, &TextCanvas::gridSizeChanged, m_terminal,
                   [terminal = m_terminal](const TerminalSize& size) { terminal->resize(size); });
  // Each chunk takes one more turn of the main queue, in order, so that the view never changes inside the session's
  // delivery.
  const MainQueue::Owner owner(&coordinator);
  m_terminal->ptySession().onOutput = [&coordinator, owner](const Bytes& chunk) {
    MainQueue::async(owner, [&coordinator, chunk] { coordinator.appendOutput(chunk); });
  };
  return view;
}

void TerminalTextView::Coordinator::appendOutput(const Bytes& data) {
  if (!textView) return;
  if (!isValidUtf8(data.view())) return;
  textView->append(ansiParser.parse(data.view()));
  textView->scrollToEndOfDocument();
}

}  // namespace zolt
