#include "updates/views/NotesView.h"

namespace zolt {

namespace {

constexpr int kMinimumWidth = 520;
constexpr int kHeight = 220;
constexpr double kDocumentMargin = 10;
constexpr double kIndent = 22;
constexpr qsizetype kMaxCharacters = 32 * 1024;

// Laying out a long paragraph takes more than linear time, so excessively long notes are truncated.
QString displayable(const QString& text) {
  if (text.size() <= kMaxCharacters) return text;
  return text.first(kMaxCharacters) + QChar(0x2026);
}

}  // namespace

NotesView::NotesView(QWidget* parent) : QTextBrowser(parent) {
  setObjectName(QStringLiteral("releaseNotes"));
  setAccessibleName(tr("Release notes"));
  setOpenLinks(false);
  setUndoRedoEnabled(false);
  setMinimumSize(kMinimumWidth, kHeight);
  document()->setDocumentMargin(kDocumentMargin);
  document()->setIndentWidth(kIndent);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
    if (link.scheme() == QLatin1String("https") || link.scheme() == QLatin1String("http")) Q_EMIT pageWanted(link);
  });
}

void NotesView::showNotes(const ReleaseNotes& notes) {
  if (notes.text.trimmed().isEmpty()) return showRemark(tr("This version has no release notes."));
  const QString text = displayable(notes.text);
  if (notes.format == ReleaseNotes::Format::Plain) {
    setPlainText(text);
  } else {
    setHtml(inertHtml(text));
  }
}

void NotesView::showRemark(const QString& text) {
  clear();
  setPlaceholderText(text);
}

QVariant NotesView::loadResource(int, const QUrl&) {
  return {};
}

}  // namespace zolt
