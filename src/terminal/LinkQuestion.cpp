#include "terminal/LinkQuestion.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>

#include "terminal/QuestionText.h"

namespace zolt {

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("LinkQuestion", text);
}

QMessageBox* makeBox(QWidget& over, QMessageBox::Icon icon, const QString& text, const QString& target) {
  auto* box = new QMessageBox(icon, tr("Open Link"), text, QMessageBox::NoButton, over.window());
  box->setObjectName(QStringLiteral("linkQuestion"));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  showPlainText(*box, target);
  return box;
}

}  // namespace

void askBeforeLink(QWidget& over, const QString& target, std::function<void()> open) {
  QMessageBox* box =
      makeBox(over, QMessageBox::Question, tr("Open this link with the program that is set for it?"), target);
  QPushButton* yes = box->addButton(tr("Open"), QMessageBox::AcceptRole);
  box->setDefaultButton(box->addButton(QMessageBox::Cancel));
  QObject::connect(yes, &QPushButton::clicked, &over, [open = std::move(open)] { open(); });
  box->open();
}

void tellRefusedLink(QWidget& over, const QString& target) {
  QMessageBox* box =
      makeBox(over, QMessageBox::Warning, tr("This link is not opened: it is not a safe address."), target);
  box->addButton(QMessageBox::Ok);
  box->open();
}

}  // namespace zolt
