#pragma once

#include <memory>

#include "view/TerminalSurface.h"
#include "view/TerminalTextView.h"

namespace zolt {

/// The log display of a terminal. Main thread.
class LogSurface : public TerminalSurface {
  Q_OBJECT

 public:
  /// Receives all output of `terminal`, which must outlive the surface; the view is a child of `parent`.
  LogSurface(TerminalController& terminal, QWidget* parent);
  ~LogSurface() override;

  TerminalNSTextView& textView() { return *m_textView; }

  TextCanvas& canvas() override { return *m_textView; }
  const HistoryText& text() const override { return m_textView->textStorage(); }
  TextSnapshot excerpt() const override;
  std::unique_ptr<OutputStyles> outputStyles() const override;
  void whenShown(std::function<void()> shown) override;
  void clear() override { m_terminal.clear(); }

 private:
  TerminalController& m_terminal;
  std::unique_ptr<TerminalTextView::Coordinator> m_coordinator;
  TerminalNSTextView* m_textView;  // a child of the parent
};

}  // namespace zolt
