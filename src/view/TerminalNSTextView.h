#pragma once

#include <QKeyEvent>
#include <QPointer>
#include <optional>

#include "canvas/CanvasInput.h"
#include "canvas/TextCanvas.h"
#include "history/TextStorage.h"
#include "session/TerminalController.h"

namespace zolt {

/// The log display: shows a growing text and sends what is typed to its terminal. Typing never changes the text.
class TerminalNSTextView : public TextCanvas, private CanvasInput {
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

 private:
  TerminalNSTextView(std::unique_ptr<TextStorage> storage, QWidget* parent, Clock& clock);

  void keyPressed(const QKeyEvent& event) override { keyDown(event); }
  void textCommitted(const QString& text) override { insertText(text); }
  void textPasted(const QString& text) override { insertText(text); }

  void keyDown(const QKeyEvent& event);
  void insertText(const QString& text);
  static std::optional<TerminalKey> handleSpecialKey(const QKeyEvent& event);

  std::unique_ptr<TextStorage> m_storage;
};

}  // namespace zolt
