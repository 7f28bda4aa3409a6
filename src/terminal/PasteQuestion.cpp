#include "terminal/PasteQuestion.h"

#include <QCoreApplication>
#include <utility>

#include "controls/Question.h"

namespace zolt {

namespace {

constexpr char kContext[] = "PasteQuestion";

QString tr(const char* text) {
  return QCoreApplication::translate(kContext, text);
}

QString reasonFor(const PasteCheck& check) {
  if (check.lines > 1) {
    return tr("The text has %1 lines. The program would take each of them as if it had been typed, and may run it at "
              "once.")
        .arg(check.lines);
  }
  if (check.endsWithLineEnd) return tr("The text ends with a line end. The program may run it at once.");
  return tr("The text has control characters. They are left out.");
}

}  // namespace

void askBeforePaste(QWidget& over, const PasteCheck& check, std::function<void()> paste) {
  ask(over,
      {.name = QStringLiteral("pasteQuestion"),
       .title = tr("Paste"),
       .text = tr("Paste this text?"),
       .explanation = reasonFor(check) + QStringLiteral("\n"),
       .quoted = QString::fromStdString(check.preview),
       .yes = tr("&Paste")},
      std::move(paste));
}

}  // namespace zolt
