#include "terminal/LinkQuestion.h"

#include <QCoreApplication>
#include <utility>

#include "controls/Question.h"

namespace zolt {

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("LinkQuestion", text);
}

Question questionOf(const QString& text, const QString& target) {
  return {.name = QStringLiteral("linkQuestion"),
          .title = tr("Open Link"),
          .text = text,
          .quoted = target,
          .yes = tr("&Open")};
}

}  // namespace

void askBeforeLink(QWidget& over, const QString& target, std::function<void()> open) {
  ask(over, questionOf(tr("Open this link with the program that is set for it?"), target), std::move(open));
}

void tellRefusedLink(QWidget& over, const QString& target) {
  warn(over, questionOf(tr("This link is not opened: it is not a safe address."), target));
}

}  // namespace zolt
