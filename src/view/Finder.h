#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "view/Clock.h"
#include "view/FindBar.h"
#include "view/TerminalNSTextView.h"
#include "view/canvas/FindSession.h"

namespace zolt {

/// Find in a terminal's output: the bar, the search behind it, and what is marked. The bar lies on the view and takes
/// none of its room, so that the terminal keeps its size. Main thread.
class Finder : public QObject {
  Q_OBJECT

 public:
  /// `view` must outlive the finder; its parent is what the bar is laid on.
  explicit Finder(TerminalNSTextView& view, Clock& clock = Clock::steady());
  ~Finder() override;

  /// Shows the bar and gives it the keyboard; with what is selected, where that is part of one line.
  void open();
  /// Looks for what is selected, without the bar taking the keyboard.
  void findSelection();
  /// Opens the bar where nothing is sought.
  void next();
  void previous();
  /// Hides the bar and selects the match that one was at.
  void close();
  bool isOpen() const { return m_bar != nullptr && !m_bar->isHidden(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void showBar();
  QString selectedPhrase() const;
  void searchAnew();
  void searchChanged();
  void showFindings();
  void showCurrent();
  void placeBar();

  TerminalNSTextView& m_view;
  FindSession m_session;
  QPointer<FindBar> m_bar;    // a child of the view's parent, made when first shown
  CanvasPosition m_from = 0;  // the end of the view when the bar was opened
  std::unique_ptr<Timer> m_shownLater;
};

}  // namespace zolt
