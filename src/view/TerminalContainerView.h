#pragma once

#include <QWidget>
#include <memory>

#include "view/TerminalTextView.h"

namespace zolt {

/// Gives a terminal's text view all the space there is.
class TerminalContainerView : public QWidget {
  Q_OBJECT

 public:
  explicit TerminalContainerView(TerminalController& terminal, QWidget* parent = nullptr);
  ~TerminalContainerView() override;

  TerminalNSTextView& textView() { return *m_textView; }

 private:
  std::unique_ptr<TerminalTextView::Coordinator> m_coordinator;
  TerminalNSTextView* m_textView;  // a child
};

}  // namespace zolt
