#include "controls/ToolTipText.h"

#include <QFont>
#include <QTextLayout>

namespace zolt {

namespace {

// A line may have any length: nobody reads beyond this, and layout would be slow.
constexpr qsizetype kMaxCharacters = 500;

void addParagraph(QStringList& lines, const QString& whole, const QFont& font, int width) {
  QString text = whole.left(kMaxCharacters);
  text.replace(QLatin1Char('\n'), QLatin1Char(' '));
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    lines.append(text.mid(line.textStart(), line.textLength()).trimmed().toHtmlEscaped());
  }
  layout.endLayout();
  if (whole.size() > kMaxCharacters) lines.last() += QChar(0x2026);
}

}  // namespace

QString toolTipText(const QStringList& paragraphs, const QFont& font, int width) {
  QStringList lines;
  for (const QString& each : paragraphs) {
    addParagraph(lines, each, font, width);
  }
  // Qt wraps a tooltip only between words, so the lines are broken here and marked as preformatted.
  return QStringLiteral("<p style='white-space:pre'>%1</p>").arg(lines.join(QLatin1String("<br>")));
}

}  // namespace zolt
