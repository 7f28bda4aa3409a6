#include "terminal/PasteQuestion.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include "terminal/QuestionText.h"

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
  const QString name = QStringLiteral("pasteQuestion");
  const auto* open = over.window()->findChild<QMessageBox*>(name);
  if (open != nullptr && open->isVisible()) return;
  auto* box =
      new QMessageBox(QMessageBox::Question, tr("Paste"), tr("Paste this text?"), QMessageBox::NoButton, over.window());
  box->setObjectName(name);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  box->setInformativeText(reasonFor(check) + QStringLiteral("\n"));
  showPlainText(*box, QString::fromStdString(check.preview));
  QPushButton* yes = box->addButton(tr("Paste"), QMessageBox::AcceptRole);
  box->setDefaultButton(box->addButton(QMessageBox::Cancel));
  QObject::connect(yes, &QPushButton::clicked, &over, [paste = std::move(paste)] { paste(); });
  box->open();
}

}  // namespace zolt
