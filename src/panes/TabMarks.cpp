#include "panes/TabMarks.h"

#include <QCoreApplication>
#include <QStringList>

namespace zolt {

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("TabMarks", text);
}

QString inWords(const TabProgress& progress) {
  switch (progress.kind) {
    case TabProgress::Kind::None:
      return {};
    case TabProgress::Kind::Value:
      return tr("%1%").arg(progress.percent);
    case TabProgress::Kind::Error:
      return tr("failed at %1%").arg(progress.percent);
    case TabProgress::Kind::Indeterminate:
      return tr("busy");
    case TabProgress::Kind::Paused:
      return tr("paused at %1%").arg(progress.percent);
  }
  return {};
}

}  // namespace

QString inWords(const TabMarks& marks) {
  QStringList words;
  if (marks.hasBell) words << tr("bell");
  if (marks.exitStatus) words << tr("exited with status %1").arg(*marks.exitStatus);
  if (const QString progress = inWords(marks.progress); !progress.isEmpty()) words << progress;
  if (marks.hasActivity) words << tr("new output");
  if (marks.panes > 1) words << tr("%1 splits").arg(marks.panes);
  return words.join(QStringLiteral(", "));
}

}  // namespace zolt
