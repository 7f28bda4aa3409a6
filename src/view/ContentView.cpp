#include "view/ContentView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QShowEvent>
#include <utility>

#include "brew/views/BrewSidebarView.h"
#include "platform/NotificationCenter.h"
#include "view/Notifications.h"

namespace zolt {

namespace {

QWidget* makeSidebar(QWidget* parent) {
  return new BrewSidebarView(parent);
}

}  // namespace

ContentView::ContentView(MakeTerminal makeTerminal, QWidget* parent)
    : ContentView(std::move(makeTerminal), UserDefaults::standard(), parent) {}

ContentView::ContentView(MakeTerminal makeTerminal, UserDefaults& defaults, QWidget* parent)
    : ContentView(std::move(makeTerminal), nullptr, defaults, parent) {}

ContentView::ContentView(MakeTerminal makeTerminal, MakeSurface makeSurface, UserDefaults& defaults, QWidget* parent)
    : QWidget(parent),
      m_makeTerminal(std::move(makeTerminal)),
      m_makeSurface(std::move(makeSurface)),
      m_selectedTheme(defaults, "selectedTheme", "Dark"),
      m_sidebar(new SidebarSlot(makeSidebar, this)),
      m_otherPane(new QShortcut(QKeySequence(Qt::Key_F6), this)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  auto* stack = new QHBoxLayout(this);
  stack->setContentsMargins(0, 0, 0, 0);
  stack->setSpacing(0);
  stack->addWidget(m_sidebar);
  m_otherPane->setEnabled(false);
  connect(m_otherPane, &QShortcut::activated, this, &ContentView::moveKeyboard);
  // The shell is told its new size once, not at every step of the animation.
  connect(m_sidebar, &SidebarSlot::aboutToMove, this, [this] { surface().canvas().holdGridSize(true); });
  connect(m_sidebar, &SidebarSlot::atRest, this, [this] {
    layout()->activate();
    surface().canvas().holdGridSize(false);
  });

  NotificationCenter& center = NotificationCenter::defaultCenter();
  center.addObserver(this, toggleBrewSidebar, [this] { setShowsBrewSidebar(!showsBrewSidebar()); });
  center.addObserver(this, clearTerminal, [this] { surface().clear(); });
}

ContentView::~ContentView() {
  NotificationCenter::defaultCenter().removeObserver(this);
}

TerminalController& ContentView::terminal() {
  ensureTerminal();
  return *m_terminal;
}

TerminalSurface& ContentView::surface() {
  ensureTerminal();
  return m_container->surface();
}

TerminalNSTextView& ContentView::textView() {
  return static_cast<LogSurface&>(surface()).textView();
}

void ContentView::setShowsBrewSidebar(bool shown) {
  if (!shown && isKeyboardInSidebar()) surface().canvas().setFocus();
  m_otherPane->setEnabled(shown);
  m_sidebar->setRevealed(shown);
}

bool ContentView::isKeyboardInSidebar() const {
  const QWidget* holder = window()->focusWidget();
  return holder != nullptr && m_sidebar->isAncestorOf(holder);
}

// Moves the focus from the terminal to the sidebar or back.
void ContentView::moveKeyboard() {
  if (isKeyboardInSidebar()) {
    surface().canvas().setFocus();
  } else if (QWidget* content = m_sidebar->content()) {
    content->setFocus(Qt::TabFocusReason);
  }
}

// Escape that the sidebar does not handle returns to the terminal.
void ContentView::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && isKeyboardInSidebar()) {
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
  painter.fillRect(event->rect(), m_container == nullptr ? QColor(Qt::black)
                                                         : QColor::fromRgba(surface().canvas().colors().background));
}

void ContentView::ensureTerminal() {
  if (m_terminal) return;
  m_terminal = m_makeTerminal(TextCanvas::gridSizeFor(size(), devicePixelRatioF()));
  m_container = new TerminalContainerView(
      [this](QWidget* container) -> std::unique_ptr<TerminalSurface> {
        if (m_makeSurface) return m_makeSurface(*m_terminal, container);
        return std::make_unique<LogSurface>(*m_terminal, container);
      },
      this);
  layout()->addWidget(m_container);
  // Show, then lay out at once: a hidden widget has no layout, and without one the canvas would report its old size to
  // the shell.
  m_container->show();
  layout()->activate();
  setFocusProxy(m_container);
}

}  // namespace zolt
