#include "view/Finder.h"

#include <QEvent>
#include <chrono>

namespace zolt {

namespace {

// How often the bar and the scroll bar are updated during a search.
constexpr std::chrono::milliseconds kShownEvery{80};
constexpr std::uint64_t kLongestPhrase = 200;  // characters
constexpr int kAroundBar = 4;                  // logical pixels between the bar and a match

// A word that was copied together with its line end is still that word.
QString withoutLineEnds(QString text) {
  const auto isLineEnd = [](QChar c) {
    return c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
  };
  while (!text.isEmpty() && isLineEnd(text.back())) {
    text.chop(1);
  }
  return text;
}

}  // namespace

Finder::Finder(TerminalSurface& surface, Clock& clock)
    : m_surface(surface),
      m_view(surface.canvas()),
      m_session(surface.text(), clock),
      m_shownLater(clock.makeTimer([this] { showFindings(); })) {
  connect(&m_session, &FindSession::resultsChanged, this, &Finder::searchChanged);
  connect(&m_session, &FindSession::currentChanged, this, &Finder::showCurrent);
  connect(&m_session, &FindSession::gaveUp, this, [this] {
    if (m_bar) m_bar->showProblem(tr("This expression takes too long on lines of this length."));
  });
  connect(&m_surface, &TerminalSurface::textChanged, this, [this] {
    m_session.movePlaces([this](TextPosition position) { return m_view.source().moved(position); });
    m_session.textChanged();
  });
  connect(&m_surface, &TerminalSurface::textReplaced, &m_session, &FindSession::textReplaced);
  m_view.installEventFilter(this);
}

Finder::~Finder() {
  m_view.setMarks(nullptr);
}

void Finder::showBar() {
  if (!m_bar) {
    m_bar = new FindBar(m_view.parentWidget());
    connect(m_bar, &FindBar::queryChanged, this, &Finder::searchAnew);
    connect(m_bar, &FindBar::backwardWanted, this,
            [this] { m_surface.takesMatches() ? m_view.setFocus() : m_session.goBackward(); });
    connect(m_bar, &FindBar::forwardWanted, &m_session, &FindSession::goForward);
    connect(m_bar, &FindBar::closeWanted, this, &Finder::close);
    m_bar->hide();
  }
  if (!m_bar->isHidden()) return;
  m_surface.followText(true);
  m_from = m_view.rangeInView().end;
  m_view.setMarks(&m_session);
  m_bar->show();
  m_bar->raise();
  placeBar();
  searchAnew();
}

void Finder::open() {
  showBar();
  m_bar->takeKeyboard(selectedPhrase());
}

void Finder::findSelection() {
  const QString phrase = selectedPhrase();
  if (phrase.isEmpty()) return;
  showBar();
  m_from = m_view.selection().range().end;
  m_bar->takeKeyboard(phrase);
  m_view.setFocus();
}

void Finder::next() {
  if (!isOpen()) return open();
  m_session.goForward();
}

void Finder::previous() {
  if (!isOpen()) return open();
  m_session.goBackward();
}

void Finder::close() {
  if (!isOpen()) return;
  const auto match = m_session.current();
  if (match && !m_surface.takesMatches()) m_view.select(*match);
  m_session.stop();
  m_surface.followText(false);
  m_view.setMarks(nullptr);
  m_bar->hide();
  m_view.setFocus();
}

// The selection, if it is short and within one line.
QString Finder::selectedPhrase() const {
  const TextRange range = m_view.selection().range();
  if (range.length() > kLongestPhrase) return {};
  const QString phrase = m_view.selectedText();
  return phrase.contains(QLatin1Char('\n')) ? QString() : phrase;
}

void Finder::searchAnew() {
  const QString query = withoutLineEnds(m_bar->query());
  if (query.isEmpty()) {
    m_session.stop();
    m_bar->showNothing();
    return;
  }
  const auto pattern = FindPattern::compile(query.toStdString(), m_bar->options());
  if (!pattern) {
    m_session.stop();
    m_bar->showProblem(QString::fromStdString(pattern.reason()));
    return;
  }
  m_bar->showProblem(QString());
  m_session.search(pattern.value(), m_from);
}

// Marks in view change at once, the numbers a moment later.
void Finder::searchChanged() {
  m_view.marksChanged();
  if (!m_shownLater->isActive()) m_shownLater->start(kShownEvery);
}

void Finder::showFindings() {
  if (!isOpen()) {
    m_view.markScrollBar({});
    return;
  }
  m_view.markScrollBar(m_session.spread());
  if (!m_session.isActive()) return;
  m_bar->showProgress(
      {.current = m_session.numberOfCurrent(), .count = m_session.count(), .searching = m_session.isSearching()});
}

void Finder::showCurrent() {
  const int covered = m_bar->geometryAt(FindBar::Edge::Top).bottom() + kAroundBar - m_view.geometry().top();
  m_view.reveal(*m_session.current(), LogicalPixels(covered));
  m_surface.takeMatch(*m_session.current());
  placeBar();
  searchChanged();
}

// At the top, unless it would cover the current match: the first rows of a text cannot be scrolled out from under it.
void Finder::placeBar() {
  const QRect area = m_view.geometry();
  m_bar->placeIn(area, FindBar::Edge::Top);
  const auto match = m_session.current();
  if (!match) return;
  m_view.makeFrameNow();
  const QRectF bar = QRectF(m_bar->geometry()).translated(-area.topLeft());
  if (bar.intersects(m_view.rectOf(match->begin)) || bar.intersects(m_view.rectOf(match->end - 1))) {
    m_bar->placeIn(area, FindBar::Edge::Bottom);
  }
}

bool Finder::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &m_view && event->type() == QEvent::Resize && isOpen()) placeBar();
  return QObject::eventFilter(watched, event);
}

}  // namespace zolt
