#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "emulation/ANSIParser.h"
#include "platform/FileHandle.h"
#include "session/TerminalController.h"
#include "view/TerminalNSTextView.h"

namespace zolt {

/// Puts a terminal's output on screen: makes the text view and connects it to the session. A value. Main thread.
class TerminalTextView {
 public:
  class Coordinator;

  /// `terminal` must outlive the views made for it, or be gone before they are used.
  explicit TerminalTextView(TerminalController& terminal) : m_terminal(&terminal) {}

  std::unique_ptr<Coordinator> makeCoordinator() const;
  /// A scrolling text view, a child of `parent`, that from now on receives all output of the terminal's current session
  /// through `coordinator`. The handler that the session had before is replaced.
  TerminalNSTextView* makeNSView(Coordinator& coordinator, QWidget* parent) const;
  /// Nothing to do: later changes reach the view through the output alone.
  void updateNSView(TerminalNSTextView&) const {}

 private:
  TerminalController* m_terminal;
};

/// Turns chunks of output into styled text, one parser for the whole life of a view.
class TerminalTextView::Coordinator : public QObject {
 public:
  QPointer<TerminalNSTextView> textView;
  QPointer<TerminalController> terminal;
  ANSIParser ansiParser;

  /// Decodes a chunk as UTF-8, parses it, appends it and scrolls to the end. A chunk that is not valid as a whole is
  /// dropped, deliberately.
  void appendOutput(const Bytes& data);
};

}  // namespace zolt
