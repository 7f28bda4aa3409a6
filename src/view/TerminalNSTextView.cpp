#include "view/TerminalNSTextView.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/CacheFolder.h"
#include "view/KeyCodes.h"
#include "view/LogRowSource.h"

namespace zolt {

namespace {

struct SpecialKeyRow {
  KeyCode code;
  TerminalKey::Case key;
};

constexpr std::array kSpecialKeys{
    SpecialKeyRow{KeyCode::Return, TerminalKey::Case::Enter},
    SpecialKeyRow{KeyCode::Tab, TerminalKey::Case::Tab},
    SpecialKeyRow{KeyCode::Delete, TerminalKey::Case::Backspace},
    SpecialKeyRow{KeyCode::Escape, TerminalKey::Case::Escape},
    SpecialKeyRow{KeyCode::Home, TerminalKey::Case::Home},
    SpecialKeyRow{KeyCode::PageUp, TerminalKey::Case::PageUp},
    SpecialKeyRow{KeyCode::ForwardDelete, TerminalKey::Case::Delete},
    SpecialKeyRow{KeyCode::End, TerminalKey::Case::End},
    SpecialKeyRow{KeyCode::PageDown, TerminalKey::Case::PageDown},
    SpecialKeyRow{KeyCode::LeftArrow, TerminalKey::Case::Left},
    SpecialKeyRow{KeyCode::RightArrow, TerminalKey::Case::Right},
    SpecialKeyRow{KeyCode::DownArrow, TerminalKey::Case::Down},
    SpecialKeyRow{KeyCode::UpArrow, TerminalKey::Case::Up},
};

std::string firstCharacter(const QString& text) {
  QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, text);
  return text.left(characters.toNextBoundary()).toStdString();
}

}  // namespace

TerminalNSTextView::TerminalNSTextView(QWidget* parent, Clock& clock)
    : TerminalNSTextView(std::make_unique<TextStorage>(HistorySettings{.folder = cacheFolder()}), parent, clock) {}

TerminalNSTextView::TerminalNSTextView(std::unique_ptr<TextStorage> storage, QWidget* parent, Clock& clock)
    : TextCanvas(std::make_unique<LogRowSource>(*storage), parent, clock), m_storage(std::move(storage)) {
  setAccessibleName(tr("Terminal"));
  setInput(this);
}

TerminalNSTextView::~TerminalNSTextView() = default;

void TerminalNSTextView::append(const AttributedString& text) {
  m_storage->append(text);
  contentChanged();
  Q_EMIT textAppended();
}

void TerminalNSTextView::keyDown(const QKeyEvent& event) {
  if (!terminal) return;
  if (const auto key = handleSpecialKey(event)) {
    terminal->sendKey(*key);
  } else if (const QString characters = event.text(); !characters.isEmpty()) {
    terminal->sendInput(characters.toStdString());
  }
}

std::optional<TerminalKey> TerminalNSTextView::handleSpecialKey(const QKeyEvent& event) {
  // Control is tested first: with any key that has a character, including those below, it sends a control byte.
  if (hasControl(event)) {
    if (const QString characters = charactersIgnoringModifiers(event); !characters.isEmpty()) {
      return TerminalKey::ctrl(firstCharacter(characters));
    }
  }
  const auto code = keyCodeOf(event);
  if (!code) return std::nullopt;
  const auto* row = std::ranges::find(kSpecialKeys, *code, &SpecialKeyRow::code);
  return row == kSpecialKeys.end() ? std::nullopt : std::optional(TerminalKey(row->key));
}

void TerminalNSTextView::insertText(const QString& text) {
  if (terminal) terminal->sendInput(text.toStdString());
}

}  // namespace zolt
