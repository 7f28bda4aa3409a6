#pragma once

#include <QKeyEvent>
#include <QPointer>
#include <optional>

#include "canvas/TextCanvas.h"
#include "history/TextStorage.h"
#include "session/TerminalController.h"

namespace zolt {

/// The log display: shows a growing text and sends what is typed to its terminal. Typing never changes the text.
class TerminalNSTextView : public TextCanvas {
  Q_OBJECT

 public:
  explicit TerminalNSTextView(QWidget* parent = nullptr, Clock& clock = Clock::steady());
  ~TerminalNSTextView() override;

  /// Receives the input; null at first.
  QPointer<TerminalController> terminal;

  bool acceptsFirstResponder() const { return true; }

  const TextStorage& textStorage() const { return *m_storage; }
  /// Appends to the end of the text; nothing is ever removed.
  void append(const AttributedString& text);

 Q_SIGNALS:
  void textAppended();

 protected:
  void keyPressEvent(QKeyEvent* event) override { keyDown(*event); }
  void insertText(const QString& text) override;

 private:
  TerminalNSTextView(std::unique_ptr<TextStorage> storage, QWidget* parent, Clock& clock);

  void keyDown(const QKeyEvent& event);
  static std::optional<TerminalKey> handleSpecialKey(const QKeyEvent& event);

  std::unique_ptr<TextStorage> m_storage;
};

}  // namespace zolt
