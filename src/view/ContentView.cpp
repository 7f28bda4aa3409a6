#include "view/ContentView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QShowEvent>
#include <algorithm>
#include <iterator>
#include <utility>

#include "brew/views/BrewSidebarView.h"
#include "controls/CommandKey.h"
#include "platform/NotificationCenter.h"
#include "view/Notifications.h"
#include "view/SingleTerminal.h"

namespace zolt {

namespace {

QWidget* makeSidebar(QWidget* parent) {
  return new BrewSidebarView(parent);
}

// One terminal in the log display.
ContentView::MakeArea logArea(ContentView::MakeTerminal makeTerminal) {
  return [makeTerminal = std::move(makeTerminal)](const TerminalSize& size) {
    return std::make_unique<SingleTerminal>(std::make_unique<TerminalPane>(
        makeTerminal(size), [](TerminalController& terminal, QWidget* parent) -> std::unique_ptr<TerminalSurface> {
          return std::make_unique<LogSurface>(terminal, parent);
        }));
  };
}

bool holdsKeyboard(const QWidget& pane) {
  const QWidget* holder = pane.window()->focusWidget();
  return holder != nullptr && pane.isAncestorOf(holder);
}

}  // namespace

ContentView::ContentView(MakeTerminal makeTerminal, QWidget* parent)
    : ContentView(std::move(makeTerminal), UserDefaults::standard(), parent) {}

ContentView::ContentView(MakeTerminal makeTerminal, UserDefaults& defaults, QWidget* parent)
    : ContentView(logArea(std::move(makeTerminal)), defaults, parent) {}

ContentView::ContentView(MakeArea makeArea, UserDefaults& defaults, QWidget* parent)
    : QWidget(parent),
      m_makeArea(std::move(makeArea)),
      m_selectedTheme(defaults, "selectedTheme", "Dark"),
      m_sidebar(new SidebarSlot(makeSidebar, this)),
      m_column(new QVBoxLayout),
      m_otherPane(new QShortcut(this)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  auto* stack = new QHBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->setSpacing(0);
  stack->addWidget(m_sidebar);
  m_column->setSpacing(0);
  stack->addLayout(m_column);
  // In the full emulation F6 alone is the program's.
  m_otherPane->setKeys(QList{QKeySequence(Qt::Key_F6)} + commandShortcuts(Qt::Key_F6));
  m_otherPane->setEnabled(false);
  connect(m_otherPane, &QShortcut::activated, this, &ContentView::moveKeyboard);
  // The shell is told its new size once, not at every step of the animation.
  connect(m_sidebar, &SidebarSlot::aboutToMove, this, [this] { area().holdGridSize(true); });
  connect(m_sidebar, &SidebarSlot::atRest, this, [this] {
    layout()->activate();
    area().holdGridSize(false);
  });

  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.addObserver(this, toggleBrewSidebar, [this] { setShowsBrewSidebar(!showsBrewSidebar()); });
  center.addObserver(this, clearTerminal, [this] { area().clear(); });
}

ContentView::~ContentView() {
  NotificationCenter::defaultCenter().removeObserver(this);
}

TerminalNSTextView& ContentView::textView() {
  return static_cast<LogSurface&>(surface()).textView();
}

void ContentView::setShowsBrewSidebar(bool shown) {
  if (!shown && holdsKeyboard(*m_sidebar)) surface().canvas().setFocus();
  m_sidebar->setRevealed(shown);
  updatePanes();
}

void ContentView::setFooter(std::unique_ptr<QWidget> footer) {
  if (m_footer) {
    if (holdsKeyboard(*m_footer)) surface().canvas().setFocus();
    // It may be a click in it that ends it.
    m_column->removeWidget(m_footer);
    m_footer->hide();
    m_footer->deleteLater();
  }
  m_footer = footer.release();
  if (m_footer) m_column->addWidget(m_footer);
  updatePanes();
}

// What can have the keyboard besides the terminal, in the order in which it goes round.
std::vector<QWidget*> ContentView::panes() const {
  std::vector<QWidget*> found;
  if (showsBrewSidebar() && m_sidebar->content() != nullptr) found.push_back(m_sidebar->content());
  if (m_footer) found.push_back(m_footer);
  return found;
}

void ContentView::updatePanes() {
  m_otherPane->setEnabled(showsBrewSidebar() || m_footer);
}

// Moves the focus from the terminal to the first pane, from one pane to the next, and from the last to the terminal.
void ContentView::moveKeyboard() {
  const std::vector<QWidget*> others = panes();
  const auto holder = std::ranges::find_if(others, [](QWidget* pane) { return holdsKeyboard(*pane); });
  const auto next = holder == others.end() ? others.begin() : std::next(holder);
  if (next == others.end()) {
    surface().canvas().setFocus();
  } else {
    window()->setAttribute(Qt::WA_KeyboardFocusChange);  // as for Tab: the focus is shown
    (*next)->setFocus(Qt::TabFocusReason);
  }
}

// Escape that a pane does not handle returns to the terminal.
void ContentView::keyPressEvent(QKeyEvent* event) {
  const bool isInPane = holdsKeyboard(*m_sidebar) || (m_footer && holdsKeyboard(*m_footer));
  if (event->key() == Qt::Key_Escape && isInPane) {
    surface().canvas().setFocus();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void ContentView::showEvent(QShowEvent* event) {
  ensureTerminal();
  QWidget::showEvent(event);
}

// The terminal's ground, but not as the palette's: the sidebar would inherit it.
void ContentView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.fillRect(event->rect(),
                   m_area == nullptr ? QColor(Qt::black) : QColor::fromRgba(surface().canvas().colors().background));
}

TerminalArea& ContentView::area() {
  if (m_area != nullptr) return *m_area;
  m_area = m_makeArea(TextCanvas::gridSizeFor(size(), devicePixelRatioF())).release();
  m_area->setParent(this);
  m_column->insertWidget(0, m_area, 1);
  // Show, then lay out at once: a hidden widget has no layout, and without one the canvas would report its old size to
  // the shell.
  m_area->show();
  layout()->activate();
  setFocusProxy(m_area);
  return *m_area;
}

}  // namespace zolt
