#pragma once

#include <QWidget>
#include <memory>

#include "session/TerminalController.h"
#include "view/TerminalContainerView.h"

namespace zolt {

/// The content of a terminal window: its terminal, on black. Owns the terminal's controller. Main thread.
class ContentView : public QWidget {
  Q_OBJECT

 public:
  explicit ContentView(std::unique_ptr<TerminalController> terminal, QWidget* parent = nullptr);
  ~ContentView() override;

  TerminalController& terminal() { return *m_terminal; }
  TerminalNSTextView& textView() { return m_container->textView(); }

 private:
  std::unique_ptr<TerminalController> m_terminal;
  TerminalContainerView* m_container;  // a child
};

}  // namespace zolt
