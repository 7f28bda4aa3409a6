#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "emulation/ANSIParser.h"
#include "platform/FileHandle.h"
#include "session/TerminalController.h"
#include "view/TerminalNSTextView.h"

namespace zolt {

/// Puts a terminal's output on screen: creates the text view and connects it to the session. A value. Main thread.
class TerminalTextView {
 public:
  class Coordinator;

  /// `terminal` must outlive any use of the views created for it.
  explicit TerminalTextView(TerminalController& terminal) : m_terminal(&terminal) {}

  std::unique_ptr<Coordinator> makeCoordinator() const;
  /// A scrolling text view, a child of `parent`, that from now on receives all output of the terminal's current session
  /// through `coordinator`. The handler that the session had before is replaced.
  TerminalNSTextView* makeNSView(Coordinator& coordinator, QWidget* parent) const;
  /// Does nothing: later changes reach the view only as output.
  void updateNSView(TerminalNSTextView&) const {}

 private:
  TerminalController* m_terminal;
};

/// Turns chunks of output into styled text, with one parser for the view's lifetime.
class TerminalTextView::Coordinator : public QObject {
 public:
  QPointer<TerminalNSTextView> textView;
  QPointer<TerminalController> terminal;
  ANSIParser ansiParser;

  /// Decodes a chunk as UTF-8, parses it, appends it and scrolls to the end. A chunk that is not valid UTF-8 is dropped
  /// whole, deliberately.
  void appendOutput(const Bytes& data);
};

}  // namespace zolt
