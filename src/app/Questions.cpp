#include "app/Questions.h"

#include <QCoreApplication>
#include <QStringList>
#include <array>
#include <utility>

#include "controls/Question.h"

namespace zolt {

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("Questions", text);
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

void askBeforeClosing(QWidget& window, ClosedThing thing, const std::vector<std::string>& programs,
                      std::optional<int> seconds, std::function<void()> close) {
  struct Words {
    const char* title;
    const char* yes;
  };
  static constexpr std::array kWords{Words{"Close Split", "&Close Split"}, Words{"Close Tab", "&Close Tab"},
                                     Words{"Close Window", "&Close Window"}};
  const Words& words = kWords[static_cast<std::size_t>(thing)];
  const QString goesOn =
      programs.size() == 1
          ? tr("It keeps running for %1 seconds, and “Reopen Closed” brings it back. After that it is ended.")
          : tr("They keep running for %1 seconds, and “Reopen Closed” brings them back. After that they are ended.");
  const QString ends = programs.size() == 1 ? tr("It ends with the window.") : tr("They end with the window.");
  ask(window,
      {.name = QStringLiteral("closeQuestion"),
       .title = tr(words.title),
       .text = runningSentence(programs),
       .explanation = seconds ? goesOn.arg(*seconds) : ends,
       .yes = tr(words.yes)},
      std::move(close));
}

void askBeforeQuitting(QWidget& window, const std::vector<std::string>& programs, std::function<void()> quit) {
  ask(window,
      {.name = QStringLiteral("quitQuestion"),
       .title = tr("Quit Zolt"),
       .text = runningSentence(programs),
       .explanation = programs.size() == 1 ? tr("It ends with Zolt.") : tr("They end with Zolt."),
       .yes = tr("&Quit")},
      std::move(quit));
}

void askBeforeReplacing(QWidget& window, Display display, std::function<void()> replace) {
  const bool isFull = display == Display::FullEmulation;
  ask(window,
      {.name = QStringLiteral("replaceQuestion"),
       .title = tr("Full Emulation"),
       .text = isFull ? tr("Windows to come use the full emulation. Replace this one?")
                      : tr("Windows to come show a log. Replace this one?"),
       .explanation =
           tr("A display is chosen when a terminal starts; a running shell is told of no change. A new window "
              "with a new shell takes this one's place, and what runs here is ended."),
       .yes = tr("&Replace This Window"),
       .no = tr("&Keep This Window")},
      std::move(replace));
}

void askBeforeEnding(QWidget& window, const std::string& program, std::function<void()> replace) {
  ask(window,
      {.name = QStringLiteral("replaceQuestion"),
       .title = tr("Full Emulation"),
       .text = runningSentence({program}),
       .explanation = tr("A new window with a new shell takes this one's place, and what runs here is ended."),
       .yes = tr("&Replace This Window"),
       .no = tr("&Keep This Window")},
      std::move(replace));
}

}  // namespace zolt
