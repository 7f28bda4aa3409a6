#include "app/TerminalWindow.h"

#include <QApplication>
#include <QScreen>
#include <QToolBar>
#include <algorithm>
#include <utility>

namespace zolt {

namespace {

constexpr QSize kContentSize(900, 600);

}  // namespace

TerminalWindow::TerminalWindow(const QString& title, const QString& subtitle,
                               std::unique_ptr<TerminalWindowController> controller)
    : m_subtitle(subtitle), m_controller(std::move(controller)) {
  setWindowTitle(title);
  setUnifiedTitleAndToolBarOnMac(true);
  setContextMenuPolicy(Qt::NoContextMenu);  // nobody is to hide the tool bar, nor find one to show
  auto* toolBar = new QToolBar(this);
  toolBar->setObjectName(QStringLiteral("mainToolbar"));
  toolBar->setMovable(false);
  addToolBar(toolBar);
  toolBar->hide();  // it has no items
  setCentralWidget(m_controller->releaseRootView().release());
  setFocusProxy(centralWidget());
  resize(kContentSize);
  center();
}

TerminalWindow::~TerminalWindow() = default;

void TerminalWindow::center() {
  const QScreen* on = screen() != nullptr ? screen() : QApplication::primaryScreen();
  if (on == nullptr) return;
  QRect frame = geometry();
  const QRect available = on->availableGeometry();
  frame.moveCenter(available.center());
  frame.moveTopLeft({std::max(frame.left(), available.left()), std::max(frame.top(), available.top())});
  setGeometry(frame);
}

void TerminalWindow::makeKeyAndOrderFront() {
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

}  // namespace zolt
