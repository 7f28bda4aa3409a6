#include "app/TerminalWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionMenuItem>
#include <QTextStream>
#include <QToolBar>
#include <algorithm>
#include <utility>

namespace zolt {

namespace {

constexpr QSize kContentSize(900, 600);

// Repeats QMenuBar's own size computation: building a menu bar takes longer than starting a shell.
int menuBarHeight() {
#ifdef Q_OS_MACOS
  return 0;  // the menu bar is at the top of the screen
#else
  const QStyle* style = QApplication::style();
  QStyleOptionMenuItem item;
  item.fontMetrics = QFontMetrics(QApplication::font("QMenuBar"));
  const QSize text = item.fontMetrics.size(Qt::TextShowMnemonic, QStringLiteral("File"));
  const int margins = style->pixelMetric(QStyle::PM_MenuBarPanelWidth) + style->pixelMetric(QStyle::PM_MenuBarVMargin);
  return style->sizeFromContents(QStyle::CT_MenuBarItem, &item, text).height() + 2 * margins;
#endif
}

int heightOf(const QWidget* footer, int width) {
  if (footer == nullptr) return 0;
  return footer->hasHeightForWidth() ? footer->heightForWidth(width) : footer->sizeHint().height();
}

qreal scaleOfPrimaryScreen() {
  const QScreen* screen = QApplication::primaryScreen();
  return screen == nullptr ? 1 : screen->devicePixelRatio();
}

}  // namespace

TerminalSize terminalSizeOfNewWindow(const CanvasFont& font, const QWidget* footer, std::optional<QSize> window) {
  const QSize whole = window.value_or(kContentSize);
  const QSize room = whole - QSize(0, menuBarHeight() + heightOf(footer, whole.width()));
  return TextCanvas::gridSizeFor(room, scaleOfPrimaryScreen(), font);
}

std::string whatTerminalSizeDependsOn(const CanvasFont& font, const QWidget* footer, std::optional<QSize> window) {
  const QSize whole = window.value_or(kContentSize);
  QString line;
  QTextStream(&line) << (footer == nullptr ? "" : footer->metaObject()->className()) << ' ' << whole.width() << ' '
                     << whole.height() << ' ' << scaleOfPrimaryScreen() << ' ' << font.size << ' ' << font.lineSpacing
                     << ' ' << QApplication::style()->objectName() << '|' << font.family << '|'
                     << QFontDatabase::systemFont(QFontDatabase::FixedFont).toString() << '|'
                     << QApplication::font("QMenuBar").toString();
  return line.simplified().toStdString();
}

TerminalWindow::TerminalWindow(const QString& title, const QString& subtitle,
                               std::unique_ptr<TerminalWindowController> controller, const TerminalWindowKind& kind)
    : m_subtitle(subtitle),
      m_kind(kind),
      m_controller(std::move(controller)),
      m_saving(std::make_unique<OutputSaving>(m_controller->rootView())) {
  setWindowTitle(title);
  setUnifiedTitleAndToolBarOnMac(true);
  setContextMenuPolicy(Qt::NoContextMenu);  // it would offer to hide or show the tool bar
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

void TerminalWindow::saveOutputAs() {
  m_saving->ask();
}

void TerminalWindow::closeNow() {
  m_isAgreed = true;
  close();
  m_isAgreed = false;
}

void TerminalWindow::closeEvent(QCloseEvent* event) {
  if (!m_isAgreed && m_mayClose && !m_mayClose()) {
    event->ignore();
    return;
  }
  m_saving->cancel();
  QMainWindow::closeEvent(event);
  Q_EMIT closed();
}

}  // namespace zolt
