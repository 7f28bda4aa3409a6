#pragma once

#include <QTextBrowser>
#include <QUrl>

#include "updates/ReleaseNotes.h"

namespace zolt {

/// A scrollable view of release notes. It loads nothing, and clicking a link only emits a signal.
class NotesView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit NotesView(QWidget* parent = nullptr);

  void showNotes(const ReleaseNotes& notes);
  /// Shows a remark in place of notes.
  void showRemark(const QString& text);

  /// Always empty: documents load nothing.
  QVariant loadResource(int type, const QUrl& name) override;

 Q_SIGNALS:
  /// A link to an http or https page was clicked.
  void pageWanted(const QUrl& page);
};

}  // namespace zolt
