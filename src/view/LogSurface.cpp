#include "view/LogSurface.h"

#include <utility>

#include "emulation/SGREncoder.h"
#include "platform/MainQueue.h"

namespace zolt {

LogSurface::LogSurface(TerminalController& terminal, QWidget* parent)
    : m_terminal(terminal),
      m_coordinator(TerminalTextView(terminal).makeCoordinator()),
      m_textView(TerminalTextView(terminal).makeNSView(*m_coordinator, parent)) {
  connect(m_textView, &TerminalNSTextView::textAppended, this, &LogSurface::textChanged);
}

LogSurface::~LogSurface() = default;

TextSnapshot LogSurface::excerpt() const {
  const TextStorage& storage = m_textView->textStorage();
  return storage.snapshot(storage.firstBlock(), storage.endBlock());
}

std::unique_ptr<OutputStyles> LogSurface::outputStyles() const {
  return textOutputStyles(appendSGR);
}

// The last chunk may need two more turns of the main queue: one to be delivered, one to be appended.
void LogSurface::whenShown(std::function<void()> shown) {
  const MainQueue::Owner self(this);
  MainQueue::async(self, [this, self, shown = std::move(shown)] {
    MainQueue::async(self, [this, shown] {
      m_textView->makeFrameNow();
      shown();
    });
  });
}

}  // namespace zolt
