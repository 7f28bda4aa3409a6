#include "brew/views/BrewSidebarView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

#include "brew/views/BrewRowDelegate.h"
#include "brew/views/SymbolView.h"
#include "controls/ControlColors.h"
#include "controls/Hairline.h"
#include "controls/TextScale.h"
#include "controls/ThinScrollBar.h"
#include "platform/MainQueue.h"
#include "symbols/Symbol.h"

namespace zolt {

namespace {

constexpr int kPadding = 10;
constexpr int kMargin = 13;  // to a field's border, which is inside the margin for its focus ring
constexpr int kHeaderIcon = 18;
constexpr int kPlaceholderIcon = 40;
constexpr QColor kMugColor(0xE8, 0x87, 0x1E);

QFont scaled(QFont font, double factor, QFont::Weight weight) {
  if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * factor);
  font.setWeight(weight);
  return font;
}

// Has its own background, with a hairline on top.
class StatusBar : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
    drawHairline(painter, QRect(0, 0, width(), 1), ControlColors(palette()).hairline);
  }
};

}  // namespace

BrewSidebarView::BrewSidebarView(QWidget* parent) : BrewSidebarView(BrewManager::shared(), parent) {}

BrewSidebarView::BrewSidebarView(BrewManager& manager, QWidget* parent)
    : QWidget(parent),
      m_manager(manager),
      m_search(new TextField(this)),
      m_tabs(new SegmentedPicker({tr("Installed"), tr("Outdated"), tr("Search")}, this)),
      m_pages(new QStackedWidget(this)),
      m_list(new QListView(this)),
      m_model(new BrewListModel(this)),
      m_status(new SecondaryLabel(QString(), this)) {
  setObjectName(QStringLiteral("brewSidebar"));
  setAutoFillBackground(true);
  setAccessibleName(QStringLiteral("Homebrew"));

  m_search->setObjectName(QStringLiteral("searchPackages"));
  m_search->setPlaceholderText(QStringLiteral("Search packages..."));
  m_search->setAccessibleName(QStringLiteral("Search packages"));
  connect(m_search, &QLineEdit::textChanged, this, &BrewSidebarView::searchTextChanged);
  m_tabs->setObjectName(QStringLiteral("segments"));
  m_tabs->setCurrentIndex(Installed);
  connect(m_tabs, &SegmentedPicker::picked, this, [this](int index) {
    m_selectedTab = static_cast<Tab>(index);
    redraw();
    m_list->scrollToTop();
  });

  m_list->setObjectName(QStringLiteral("packages"));
  m_list->setAccessibleName(QStringLiteral("Packages"));
  m_list->setFrameShape(QFrame::NoFrame);
  m_list->setModel(m_model);
  m_list->setItemDelegate(new BrewRowDelegate(m_list));
  m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  m_list->setContextMenuPolicy(Qt::CustomContextMenu);
  m_list->viewport()->setAutoFillBackground(false);
  connect(m_list, &QWidget::customContextMenuRequested, this, &BrewSidebarView::showContextMenu);
  m_list->setVerticalScrollBar(new ThinScrollBar(ThinScrollBar::Ground::Window, m_list));
  // For keyboards without a Menu key.
  for (const QKeySequence& keys :
       {QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter), QKeySequence(Qt::SHIFT | Qt::Key_F10)}) {
    auto* shortcut = new QShortcut(keys, m_list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this, [this] {
      const QModelIndex index = m_list->currentIndex();
      if (index.isValid()) openMenuOf(index, m_list->visualRect(index).center());
    });
  }
  m_pages->addWidget(m_list);
  m_pages->addWidget(makePlaceholder());

  auto* fields = new QVBoxLayout;
  fields->setContentsMargins(kPadding, 0, kPadding, kPadding);
  fields->setSpacing(kPadding);
  fields->addWidget(m_search);
  fields->addWidget(m_tabs);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeHeader());
  column->addLayout(fields);
  column->addWidget(m_pages, 1);
  column->addWidget(makeStatusBar());

  setFocusProxy(m_search);
  setTabOrder(findChild<QToolButton*>(QStringLiteral("refresh")), m_search);
  setTabOrder(m_search, m_tabs->segment(Installed));
  setTabOrder(m_tabs->segment(Installed), m_tabs->segment(Outdated));
  setTabOrder(m_tabs->segment(Outdated), m_tabs->segment(Search));
  setTabOrder(m_tabs->segment(Search), m_list);
  connect(&m_manager, &BrewManager::objectWillChange, this, &BrewSidebarView::redrawLater);
  redraw();
}

QWidget* BrewSidebarView::makeHeader() {
  auto* header = new QWidget(this);
  auto* row = new QHBoxLayout(header);
  row->setContentsMargins(kMargin, kPadding, kPadding, kPadding);
  row->addWidget(new SymbolView(QStringLiteral("mug.fill"), scaledToText(kHeaderIcon, font()), kMugColor, header));
  auto* title = new QLabel(QStringLiteral("Homebrew"), header);
  title->setFont(scaled(font(), 1.1, QFont::DemiBold));
  row->addWidget(title);
  row->addStretch();
  auto* refresh = new QToolButton(header);
  refresh->setObjectName(QStringLiteral("refresh"));
  refresh->setAutoRaise(true);
  refresh->setIconSize(refresh->iconSize() * textScale(font()));
  refresh->setIcon(symbol(QStringLiteral("arrow.clockwise")));
  refresh->setFocusPolicy(Qt::TabFocus);
  refresh->setAccessibleName(QStringLiteral("Refresh"));
  refresh->setToolTip(QStringLiteral("Refresh"));
  connect(refresh, &QToolButton::clicked, this, [this] { m_manager.refresh(); });
  row->addWidget(refresh);
  return header;
}

QWidget* BrewSidebarView::makePlaceholder() {
  auto* page = new QWidget(this);
  page->setObjectName(QStringLiteral("searchPlaceholder"));
  auto* column = new QVBoxLayout(page);
  column->setSpacing(kPadding);
  auto* title = new QLabel(QStringLiteral("Search Homebrew"), page);
  title->setFont(scaled(font(), 1.2, QFont::DemiBold));
  column->addStretch(2);
  column->addWidget(
      new SymbolView(QStringLiteral("magnifyingglass"), scaledToText(kPlaceholderIcon, font()), QColor(), page), 0,
      Qt::AlignHCenter);
  column->addWidget(title, 0, Qt::AlignHCenter);
  column->addStretch(3);
  return page;
}

QWidget* BrewSidebarView::makeStatusBar() {
  auto* bar = new StatusBar(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(kMargin, 6, kMargin, 6);
  m_status->setObjectName(QStringLiteral("status"));
  m_status->setFont(scaled(font(), 0.85, QFont::Normal));
  row->addWidget(m_status, 1);
  return bar;
}

void BrewSidebarView::searchTextChanged(const QString& text) {
  // Typing in another tab starts no search, and neither does switching to this one afterwards.
  if (m_selectedTab != Search) return;
  m_manager.search(text);
  redraw();
}

void BrewSidebarView::redrawLater() {
  if (std::exchange(m_redrawing, true)) return;
  MainQueue::async(MainQueue::Owner(this), [this] {
    m_redrawing = false;
    redraw();
  });
}

std::vector<BrewSection> BrewSidebarView::sections() const {
  switch (m_selectedTab) {
    case Installed:
      return {{.header = tr("Formulae"), .packages = m_manager.installedFormulae(), .type = BrewPackageType::Formula},
              {.header = tr("Casks"), .packages = m_manager.installedCasks(), .type = BrewPackageType::Cask}};
    case Outdated:
      return {{.header = tr("Updates Available"), .packages = m_manager.outdatedPackages(), .type = std::nullopt}};
    case Search:
      break;
  }
  return {{.header = tr("Results"), .packages = m_manager.searchResults(), .type = std::nullopt}};
}

void BrewSidebarView::redraw() {
  m_status->setText(m_manager.status());
  m_pages->setCurrentIndex(m_selectedTab == Search && m_search->text().isEmpty() ? 1 : 0);
  const int offset = m_list->verticalScrollBar()->value();
  if (!m_model->setSections(sections())) return;
  // A reload keeps the scroll position; new results are shown from the top, best first.
  m_list->verticalScrollBar()->setValue(m_selectedTab == Search ? 0 : offset);
}

void BrewSidebarView::addContextActions(QMenu& menu, const BrewPackage& package) {
  if (m_selectedTab == Outdated) {
    menu.addAction(tr("Upgrade"), this, [this, package] { m_manager.upgrade(package); });
    menu.addAction(tr("Upgrade All"), this, [this] { m_manager.upgradeAll(); });
  } else if (m_selectedTab == Search) {
    menu.addAction(tr("Install"), this, [this, package] { m_manager.install(package); });
    // Its output is deliberately discarded.
    menu.addAction(tr("Info"), this, [this, package] {
      m_manager.runBrewCommand({QStringLiteral("info"), package.name}, [](const std::optional<QString>&) {});
    });
  }
}

void BrewSidebarView::showContextMenu(const QPoint& point) {
  openMenuOf(m_list->indexAt(point), point);
}

void BrewSidebarView::openMenuOf(const QModelIndex& index, const QPoint& point) {
  const BrewPackage* package = index.isValid() ? m_model->packageAt(index.row()) : nullptr;
  if (package == nullptr || m_selectedTab == Installed) return;
  auto* menu = new QMenu(this);
  connect(menu, &QMenu::aboutToHide, menu, &QObject::deleteLater);  // choosing an item only hides it
  addContextActions(*menu, *package);
  menu->popup(m_list->viewport()->mapToGlobal(point));
}

}  // namespace zolt
