#pragma once

#include <QWidget>
#include <memory>

#include "view/Finder.h"
#include "view/TerminalTextView.h"

namespace zolt {

/// Fills its area with a terminal's text view, and finds in its text.
class TerminalContainerView : public QWidget {
  Q_OBJECT

 public:
  explicit TerminalContainerView(TerminalController& terminal, QWidget* parent = nullptr);
  ~TerminalContainerView() override;

  TerminalNSTextView& textView() { return *m_textView; }

  Q_INVOKABLE void find() { m_finder->open(); }
  Q_INVOKABLE void findNext() { m_finder->next(); }
  Q_INVOKABLE void findPrevious() { m_finder->previous(); }
  Q_INVOKABLE void findSelection() { m_finder->findSelection(); }

 private:
  std::unique_ptr<TerminalTextView::Coordinator> m_coordinator;
  TerminalNSTextView* m_textView;  // a child
  std::unique_ptr<Finder> m_finder;
};

}  // namespace zolt
