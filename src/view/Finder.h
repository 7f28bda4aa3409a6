#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

#include "platform/Clock.h"
#include "view/FindBar.h"
#include "view/FindSession.h"
#include "view/TerminalSurface.h"

namespace zolt {

/// Find in a terminal's output: the bar, the search behind it, and the marks. The bar lies on top of the view, so that
/// the terminal keeps its size. Main thread.
class Finder : public QObject {
  Q_OBJECT

 public:
  /// `surface` must outlive the finder; the bar is laid over the parent of its canvas.
  explicit Finder(TerminalSurface& surface, Clock& clock = Clock::steady());
  ~Finder() override;

  /// Shows the bar and gives it the focus. A selection within one line becomes the query.
  void open();
  /// Searches for the selection; the terminal keeps the focus.
  void findSelection();
  /// Go to the next or previous match, or open the bar if it is closed.
  void next();
  void previous();
  /// Hides the bar and selects the current match.
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

  TerminalSurface& m_surface;
  TextCanvas& m_view;
  FindSession m_session;
  QPointer<FindBar> m_bar;  // a child of the view's parent, made when first shown
  TextPosition m_from;      // the end of the view when the bar was opened
  std::unique_ptr<Timer> m_shownLater;
};

}  // namespace zolt
