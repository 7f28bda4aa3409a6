#pragma once

#include <QTextBrowser>
#include <QUrl>

#include "updates/ReleaseNotes.h"

namespace zolt {

/// Release notes to read, scrolled: text that loads nothing, whose links only tell that they were clicked.
class NotesView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit NotesView(QWidget* parent = nullptr);

  void showNotes(const ReleaseNotes& notes);
  /// A line of our own in their place.
  void showRemark(const QString& text);

  /// Never anything, whatever a document asks for.
  QVariant loadResource(int type, const QUrl& name) override;

 Q_SIGNALS:
  /// A link to an http or https page was clicked.
  void pageWanted(const QUrl& page);
};

}  // namespace zolt
