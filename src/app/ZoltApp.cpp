#include "app/ZoltApp.h"

#include <QApplication>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionMenuItem>

#include "app/AboutWindow.h"
#include "app/Commands.h"
#include "app/TerminalMenuBar.h"
#include "app/WindowPalette.h"
#include "desktop/DesktopPalette.h"

namespace zolt {

namespace {

// A text at the end of the menu bar, drawn by the style as a menu title, so that both share a baseline.
class Subtitle : public QLabel {
 public:
  Subtitle(const QString& text, QWidget* bar) : QLabel(text, bar) {
    setObjectName(QStringLiteral("subtitle"));
    setFont(bar->font());
    QStyleOptionMenuItem title;
    title.initFrom(bar);
    const QSize size = fontMetrics().size(Qt::TextSingleLine, text);
    setFixedHeight(bar->style()->sizeFromContents(QStyle::CT_MenuBarItem, &title, size, bar).height());
    setContentsMargins(0, 0, 10, 0);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QStyleOptionMenuItem title;
    title.initFrom(this);
    title.rect = contentsRect();
    title.menuItemType = QStyleOptionMenuItem::Normal;
    title.text = text().replace(QLatin1Char('&'), QStringLiteral("&&"));  // a name: "&" marks no mnemonic
    title.palette.setColor(QPalette::ButtonText, palette().color(QPalette::PlaceholderText));
    QPainter painter(this);
    parentWidget()->style()->drawControl(QStyle::CE_MenuBarItem, &title, &painter, this);
  }
};

// The menu bar of the log display is as black as the terminal below it.
QPalette barPalette() {
  QPalette palette = darkPalette();
  palette.setColor(QPalette::Window, Qt::black);
  palette.setColor(QPalette::Button, Qt::black);
  return palette;
}

// Tabs and splits are commanded wherever in their window the keyboard is: in the menus, or in the sidebar.
QObject* areaOf(QWidget& window) {
  auto* terminal = qobject_cast<TerminalWindow*>(&window);
  return terminal == nullptr ? nullptr : &terminal->contentViewController().rootView().area();
}

void bringToFront(QWidget& window) {
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace

ZoltApp::ZoltApp(Config& config, UserDefaults& defaults, Environment environment)
    : m_config(config),
      m_defaults(defaults),
      m_appDelegate(std::make_unique<AppDelegate>(
          config, defaults, [this](TerminalWindow& window) { prepareWindow(window); }, std::move(environment))),
      m_actions({m_appDelegate.get(), this, QCoreApplication::instance()}, areaOf),
      m_menus{.actions = m_actions, .windows = [this] { return windowsOnScreen(); }, .defaults = defaults} {
  QApplication::setQuitOnLastWindowClosed(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}

ZoltApp::~ZoltApp() = default;

std::vector<TerminalWindow*> ZoltApp::windowsOnScreen() const {
  std::vector<TerminalWindow*> windows;
  for (const auto& window : m_appDelegate->windows()) {
    if (window->isVisible()) windows.push_back(window.get());
  }
  return windows;
}

void ZoltApp::prepareWindow(TerminalWindow& window) {
  auto* bar = new TerminalMenuBar(&window);
  if (window.kind().display == Display::Log) bar->setPalette(barPalette());
  const QList<QMenu*> menus = makeMenus(window, m_menus);
  for (QMenu* menu : menus) {
    bar->addMenu(menu);
  }
  bar->setCornerWidget(new Subtitle(window.subtitle(), bar));
  window.setMenuBar(bar);
  if (window.kind().display == Display::FullEmulation) new WindowPalette(window);
}

void ZoltApp::showPreferences() {
  if (!m_preferences) {
    m_preferences = std::make_unique<PreferencesWindow>(m_config, m_defaults, ShellManager::shared());
    addMenuShortcuts(*m_preferences, m_menus);
  }
  bringToFront(*m_preferences);
}

void ZoltApp::showCommands() {
  auto* window = qobject_cast<TerminalWindow*>(QApplication::activeWindow());
  if (window != nullptr && window->kind().display == Display::FullEmulation) zolt::showCommands(*window, m_menus);
}

void ZoltApp::showAbout() {
  if (!m_about) {
    m_about = std::make_unique<AboutWindow>();
    addMenuShortcuts(*m_about, m_menus);
  }
  bringToFront(*m_about);
}

}  // namespace zolt
