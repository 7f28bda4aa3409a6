#include "app/Questions.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <algorithm>
#include <utility>

namespace zolt {

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("Questions", text);
}

struct Question {
  const char* name;  // of its box
  const char* title;
  QString text;
  QString explanation;
  const char* yes;
  const char* no;
};

void ask(QWidget& window, const Question& question, std::function<void()> act) {
  const QString name = QLatin1String(question.name);
  const auto open = window.findChildren<QMessageBox*>(name);
  if (std::ranges::any_of(open, &QMessageBox::isVisible)) return;
  auto* box = new QMessageBox(QMessageBox::Question, tr(question.title), question.text, QMessageBox::NoButton, &window);
  box->setObjectName(name);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  box->setInformativeText(question.explanation);
  QPushButton* yes = box->addButton(tr(question.yes), QMessageBox::AcceptRole);
  QPushButton* no = box->addButton(tr(question.no), QMessageBox::RejectRole);
  box->setDefaultButton(no);
  box->setEscapeButton(no);
  QObject::connect(yes, &QPushButton::clicked, &window, [act = std::move(act)] { act(); });
  box->open();
}

QString quoted(const std::string& program) {
  return tr("“%1”").arg(QString::fromStdString(program));
}

}  // namespace

QString runningSentence(const std::vector<std::string>& programs) {
  if (programs.size() == 1) {
    return programs.front().empty() ? tr("A program is running.") : tr("%1 is running.").arg(quoted(programs.front()));
  }
  QStringList names;
  for (const std::string& program : programs) {
    if (program.empty()) return tr("%1 programs are running.").arg(programs.size());
    if (!names.contains(quoted(program))) names << quoted(program);
  }
  return tr("%1 programs are running: %2.").arg(programs.size()).arg(names.join(QStringLiteral(", ")));
}

void askBeforeClosing(QWidget& window, const std::string& program, std::function<void()> close) {
  ask(window,
      {.name = "closeQuestion",
       .title = "Close Window",
       .text = runningSentence({program}),
       .explanation = tr("It ends with the window."),
       .yes = "Close Window",
       .no = "Cancel"},
      std::move(close));
}

void askBeforeQuitting(QWidget& window, const std::vector<std::string>& programs, std::function<void()> quit) {
  ask(window,
      {.name = "quitQuestion",
       .title = "Quit Zolt",
       .text = runningSentence(programs),
       .explanation = programs.size() == 1 ? tr("It ends with Zolt.") : tr("They end with Zolt."),
       .yes = "Quit",
       .no = "Cancel"},
      std::move(quit));
}

void askBeforeReplacing(QWidget& window, Display display, std::function<void()> replace) {
  const bool isFull = display == Display::FullEmulation;
  ask(window,
      {.name = "replaceQuestion",
       .title = "Full Emulation",
       .text = isFull ? tr("Windows to come use the full emulation. Replace this one?")
                      : tr("Windows to come show a log. Replace this one?"),
       .explanation =
           tr("A display is chosen when a terminal starts; a running shell is told of no change. A new window "
              "with a new shell takes this one's place, and the shell that runs here is ended, with "
              "everything in it."),
       .yes = "Replace This Window",
       .no = "Keep This Window"},
      std::move(replace));
}

void askBeforeEnding(QWidget& window, const std::string& program, std::function<void()> replace) {
  ask(window,
      {.name = "replaceQuestion",
       .title = "Full Emulation",
       .text = runningSentence({program}),
       .explanation = tr("A new window with a new shell takes this one's place, and the shell that runs here is ended, "
                         "with everything in it."),
       .yes = "Replace This Window",
       .no = "Keep This Window"},
      std::move(replace));
}

}  // namespace zolt
