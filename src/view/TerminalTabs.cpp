#include "view/TerminalTabs.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "controls/BarButton.h"
#include "controls/ControlColors.h"
#include "view/TypingBar.h"

namespace zolt {

namespace {

// Output this soon after a resize is a redraw.
constexpr std::chrono::milliseconds kRedrawTime{1000};

TabProgress toTab(const vt::Progress& progress) {
  using From = vt::Progress::Kind;
  using To = TabProgress::Kind;
  switch (progress.kind) {
    case From::None:
      return {};
    case From::Normal:
      return {.kind = To::Value, .percent = progress.percent};
    case From::Error:
      return {.kind = To::Error, .percent = progress.percent};
    case From::Indeterminate:
      return {.kind = To::Indeterminate};
    case From::Paused:
      return {.kind = To::Paused, .percent = progress.percent};
  }
  return {};
}

// Of several panes, the marks that matter most.
TabMarks joined(const TabMarks& one, const TabMarks& other) {
  TabMarks both = one;
  both.hasActivity = one.hasActivity || other.hasActivity;
  both.hasBell = one.hasBell || other.hasBell;
  if (!both.exitStatus || *both.exitStatus == 0) {
    if (other.exitStatus) both.exitStatus = other.exitStatus;
  }
  if (both.progress.kind == TabProgress::Kind::None) both.progress = other.progress;
  return both;
}

}  // namespace

TerminalTabs::TerminalTabs(MakePane makePane, QWidget* parent)
    : TerminalArea(parent),
      m_makePane(std::move(makePane)),
      m_bar(new QWidget(this)),
      m_strip(new TabStrip(m_bar)),
      m_typingBar(new TypingBar(this)),
      m_stack(new QStackedLayout),
      m_grip(new PaneGrip(this)) {
  setAcceptDrops(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_bar);
  column->addWidget(m_typingBar);
  column->addLayout(m_stack, 1);
  auto* row = new QHBoxLayout(m_bar);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(m_strip, 1);
  auto* more = new BarButton(QStringLiteral("plus"), QString(), tr("New tab"), m_bar);
  more->setFocusPolicy(Qt::NoFocus);
  row->addWidget(more);
  m_bar->setAutoFillBackground(true);
  m_bar->hide();
  m_typingBar->hide();
  connect(m_typingBar, &TypingBar::stopWanted, this, &TerminalTabs::typeIntoAll);
  connect(more, &QAbstractButton::clicked, this, &TerminalTabs::addTab);
  connect(m_strip, &QTabBar::currentChanged, this, &TerminalTabs::currentTabChanged);
  connect(m_strip, &QTabBar::tabMoved, this, &TerminalTabs::tabMoved);
  connect(m_strip, &TabStrip::closeWanted, this, &TerminalTabs::tabCloseWanted);
  connect(m_strip, &TabStrip::named, this, &TerminalTabs::setName);
  connect(m_strip, &TabStrip::tabDropped, this, &TerminalTabs::takeIn);
  connect(m_strip, &TabStrip::tornOff, this, [this](int index, QPoint at) { Q_EMIT windowWanted(index, at); });
  connect(m_strip, &TabStrip::menuWanted, this, &TerminalTabs::showMenu);
  prepareGrip();
}

TerminalTabs::TerminalTabs(std::unique_ptr<TerminalPane> first, MakePane makePane, QWidget* parent)
    : TerminalTabs(std::move(makePane), parent) {
  TerminalPane& pane = *first.release();
  insert(new SplitView(pane), QString(), pane, 0);
}

TerminalTabs::~TerminalTabs() {
  m_strip->disconnect(this);
  m_watched.clear();
}

std::vector<TerminalPane*> TerminalTabs::panesOf(int index) const {
  const std::vector<QWidget*> widgets = tab(index).view->panes();
  std::vector<TerminalPane*> panes(widgets.size());
  std::ranges::transform(widgets, panes.begin(), toPane);
  return panes;
}

std::vector<TerminalPane*> TerminalTabs::panes() const {
  std::vector<TerminalPane*> all;
  for (int index = 0; index < count(); ++index) {
    std::ranges::copy(panesOf(index), std::back_inserter(all));
  }
  return all;
}

int TerminalTabs::indexOf(const TerminalPane& pane) const {
  const auto found =
      std::ranges::find_if(m_tabs, [&pane](const Tab& each) { return each.view == pane.parentWidget(); });
  return found == m_tabs.end() ? -1 : static_cast<int>(found - m_tabs.begin());
}

TerminalTabs::Tab* TerminalTabs::tabOf(const TerminalPane& pane) {
  const int index = indexOf(pane);
  return index < 0 ? nullptr : &tab(index);
}

// Tabs: they come, go and change places.

bool TerminalTabs::addTab() {
  openTab({});
  return true;
}

TerminalPane* TerminalTabs::openTab(const Wanted& wanted) {
  if (!m_makePane) return nullptr;
  const std::string folder = wanted.folder ? *wanted.folder : folderOfCurrent();
  m_bar->show();
  layout()->activate();  // the new terminal has the room that is left
  TerminalPane& pane = *m_makePane({.area = m_stack->geometry().size(),
                                    .scale = devicePixelRatioF(),
                                    .folder = folder,
                                    .program = wanted.program})
                            .release();
  insert(new SplitView(pane), QString(), pane, currentIndex() + 1);
  return &pane;
}

void TerminalTabs::setName(int index, const QString& name) {
  tab(index).name = name;
  updateTitle(index);
}

void TerminalTabs::insert(SplitView* view, const QString& name, TerminalPane& current, int before) {
  connect(view, &SplitView::dividerGrabbed, this, [this] { holdGridSize(true); });
  connect(view, &SplitView::dividerReleased, this, [this] { holdGridSize(false); });
  m_stack->addWidget(view);
  m_tabs.insert(m_tabs.begin() + before, Tab{.view = view, .name = name, .current = &current});
  for (TerminalPane* pane : panesOf(before)) {
    watch(*pane);
  }
  {
    const QSignalBlocker quiet(m_strip);
    m_strip->addTabAt(before);
    m_strip->turnTo(before);
  }
  updateStrip();
  updateTitle(before);
  updateMarks(before);
  currentTabChanged(before);
  for (TerminalPane* pane : panesOf(before)) {
    Q_EMIT paneAdded(pane);
  }
}

DetachedTab TerminalTabs::takeTab(int index) {
  const Tab taken = tab(index);
  for (TerminalPane* pane : panesOf(index)) {
    Q_EMIT paneLeaving(pane);
    unwatch(*pane);
  }
  taken.view->disconnect(this);
  const bool wasCurrent = index == currentIndex();
  m_tabs.erase(m_tabs.begin() + index);
  {
    const QSignalBlocker quiet(m_strip);
    m_strip->removeTabAt(index);
  }
  m_stack->removeWidget(taken.view);
  taken.view->hide();
  taken.view->setParent(nullptr);
  updateStrip();
  if (m_tabs.empty()) {
    Q_EMIT emptied();
  } else if (wasCurrent) {
    currentTabChanged(currentIndex());
  } else {
    Q_EMIT arrangementChanged();
  }
  return {.view = std::unique_ptr<SplitView>(taken.view), .name = taken.name, .current = taken.current};
}

void TerminalTabs::insertTab(DetachedTab tab, int before) {
  TerminalPane* current = tab.current ? tab.current.data() : toPane(tab.view->panes().front());
  insert(tab.view.release(), tab.name, *current, std::clamp(before, 0, count()));
}

void TerminalTabs::tabMoved(int from, int to) {
  Tab moved = std::move(tab(from));
  m_tabs.erase(m_tabs.begin() + from);
  m_tabs.insert(m_tabs.begin() + to, std::move(moved));
}

void TerminalTabs::currentTabChanged(int index) {
  if (index < 0 || index >= count()) return;
  // What was in view has been seen, even what changed nothing on the screen.
  for (auto& [pane, watch] : m_watched) {
    if (pane->parentWidget() == m_stack->currentWidget()) watch.bytesSeen = surfaceOf(*pane).bytesPrinted();
  }
  m_stack->setCurrentWidget(tab(index).view);
  setFocusProxy(&currentPane());
  for (TerminalPane* pane : panesOf(index)) {
    Watch& watch = m_watched.at(pane);
    watch.marks.hasActivity = false;
    watch.marks.hasBell = false;
  }
  updateMarks(index);
  updateColors();
  updateTyping(index);
  currentPane().setFocus();
  Q_EMIT titleChanged();
  Q_EMIT arrangementChanged();
}

// Also for one tab that hides some of its splits: it says so.
void TerminalTabs::updateStrip() {
  const bool hidesSplits = count() == 1 && tab(0).view->zoomed() != nullptr;
  m_bar->setVisible(count() > 1 || hidesSplits || (count() == 1 && m_alwaysShowsStrip));
}

void TerminalTabs::setAlwaysShowsStrip(bool always) {
  m_alwaysShowsStrip = always;
  updateStrip();
}

void TerminalTabs::turnTo(int index) {
  if (count() > 0) setCurrentIndex((index + count()) % count());
}

void TerminalTabs::moveTab(int to) {
  if (to >= 0 && to < count()) m_strip->moveTab(currentIndex(), to);
}

void TerminalTabs::select(int number) {
  if (number >= 1 && number <= count()) setCurrentIndex(number - 1);
}

void TerminalTabs::renameTab() {
  if (m_bar->isVisible()) m_strip->editName(currentIndex());
}

void TerminalTabs::moveTabToNewWindow() {
  if (count() > 1) Q_EMIT windowWanted(currentIndex(), std::nullopt);
}

void TerminalTabs::closeTab() {
  Q_EMIT tabCloseWanted(currentIndex());
}

void TerminalTabs::showMenu(int index, QPoint at) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  // The tab may be elsewhere, or gone, by then.
  const auto add = [&](const QString& text, auto act) {
    connect(menu->addAction(text), &QAction::triggered, this, [this, id = m_strip->idOf(index), act] {
      if (const int now = m_strip->indexOf(id); now >= 0) act(now);
    });
  };
  add(tr("&New Tab"), [this](int) { addTab(); });
  add(tr("&Rename..."), [this](int now) { m_strip->editName(now); });
  add(tr("&Move to New Window"), [this](int now) { Q_EMIT windowWanted(now, std::nullopt); });
  menu->addSeparator();
  add(tr("&Close"), [this](int now) { Q_EMIT tabCloseWanted(now); });
  menu->popup(at);
}

// Panes.

void TerminalTabs::watch(TerminalPane& pane) {
  EmulationSurface& surface = surfaceOf(pane);
  Watch& watch = m_watched[&pane];
  watch.connections = std::make_unique<QObject>();
  watch.bytesSeen = surface.bytesPrinted();
  QObject* owner = watch.connections.get();
  connect(&surface, &EmulationSurface::titleChanged, owner, [this, &pane] { updateTitle(indexOf(pane)); });
  connect(&surface, &EmulationSurface::themeChanged, owner, [this] {
    updateColors();
    Q_EMIT themeChanged();
  });
  connect(&surface, &EmulationSurface::screenChanged, owner, [this, &pane] { screenChanged(pane); });
  connect(&surface, &EmulationSurface::bellRang, owner, [this, &pane] {
    if (indexOf(pane) != currentIndex()) m_watched.at(&pane).marks.hasBell = true;
    updateMarks(indexOf(pane));
    Q_EMIT bellRang();
  });
  connect(&surface.canvas(), &TextCanvas::gridSizeChanged, owner,
          [this, &pane] { m_watched.at(&pane).resized = std::chrono::steady_clock::now(); });
  surface.canvas().installEventFilter(this);
  surface.canvas().viewport()->installEventFilter(this);
}

void TerminalTabs::unwatch(TerminalPane& pane) {
  surfaceOf(pane).canvas().removeEventFilter(this);
  surfaceOf(pane).canvas().viewport()->removeEventFilter(this);
  surfaceOf(pane).canvas().setDimmed(false);
  surfaceOf(pane).canvas().holdGridSize(false);
  surfaceOf(pane).display().input().setFollowers({});
  m_watched.erase(&pane);
}

void TerminalTabs::screenChanged(TerminalPane& pane) {
  Watch& watch = m_watched.at(&pane);
  EmulationSurface& surface = surfaceOf(pane);
  const int index = indexOf(pane);
  const std::uint64_t printed = surface.bytesPrinted();
  const bool hasPrinted = std::exchange(watch.bytesSeen, printed) != printed;
  const bool isRedrawn = std::chrono::steady_clock::now() - watch.resized < kRedrawTime;
  if (hasPrinted && !isRedrawn && index != currentIndex()) watch.marks.hasActivity = true;
  const TabProgress progress = toTab(surface.progress());
  const bool hasProgressed = std::exchange(watch.marks.progress, progress) != progress;
  const std::string& folder = surface.display().source().screen()->workingDirectory;
  if (folder != watch.folder) {
    watch.folder = folder;
    updateTitle(index);
  }
  updateMarks(index);
  if (hasProgressed) Q_EMIT progressChanged();
}

std::vector<TabProgress> TerminalTabs::progress() const {
  std::vector<TabProgress> all;
  for (const auto& [pane, watch] : m_watched) {
    all.push_back(watch.marks.progress);
  }
  return all;
}

void TerminalTabs::setExitStatus(TerminalPane& pane, int status) {
  m_watched.at(&pane).marks.exitStatus = status;
  updateMarks(indexOf(pane));
}

bool TerminalTabs::eventFilter(QObject* watched, QEvent* event) {
  const auto paneWith = [this](auto widgetOf, const QObject* widget) {
    const auto found = std::ranges::find_if(
        m_watched, [&](const auto& each) { return widgetOf(surfaceOf(*each.first).canvas()) == widget; });
    return found == m_watched.end() ? nullptr : found->first;
  };
  if (event->type() == QEvent::FocusIn) {
    TerminalPane* pane = paneWith([](TextCanvas& canvas) { return &canvas; }, watched);
    if (pane != nullptr) setCurrent(*pane);
  } else if (event->type() == QEvent::MouseMove) {
    TerminalPane* pane = paneWith([](TextCanvas& canvas) { return canvas.viewport(); }, watched);
    if (pane != nullptr) pointerMoved(*pane, static_cast<const QMouseEvent&>(*event));
  }
  return TerminalArea::eventFilter(watched, event);
}

void TerminalTabs::setCurrent(TerminalPane& pane) {
  Tab* holder = tabOf(pane);
  if (holder == nullptr || holder->current == &pane) return;
  holder->current = &pane;
  if (holder->view->zoomed() != nullptr) holder->view->setZoomed(&pane);
  updateTitle(indexOf(pane));
  if (holder != &tab(currentIndex())) return;
  setFocusProxy(&pane);
  updateDimming();
}

bool TerminalTabs::validate(const QByteArray& action) const {
  static const std::vector<QByteArray> kNeedTabs{"nextTab",         "previousTab",   "moveTabForward",
                                                 "moveTabBackward", "selectLastTab", "moveTabToNewWindow"};
  static const std::vector<QByteArray> kNeedPanes{
      "goLeft",        "goRight",         "goUp",          "goDown",   "moveDividerLeft", "moveDividerRight",
      "moveDividerUp", "moveDividerDown", "equalisePanes", "zoomPane", "typeIntoAll",     "movePaneToNewTab",
      "swapPanes"};
  if (count() == 0) return false;
  if (std::ranges::find(kNeedTabs, action) != kNeedTabs.end()) return count() > 1;
  if (std::ranges::find(kNeedPanes, action) != kNeedPanes.end()) return panesOf(currentIndex()).size() > 1;
  if (action == "renameTab") return m_bar->isVisible();
  if (action.startsWith("selectTab")) return action.mid(9).toInt() <= count();
  if (action.startsWith("split")) return static_cast<bool>(m_makePane);
  return true;
}

bool TerminalTabs::isOn(const QByteArray& action) const {
  if (count() == 0) return false;
  const Tab& current = tab(currentIndex());
  return (action == "zoomPane" && current.view->zoomed() != nullptr) ||
         (action == "typeIntoAll" && current.typesIntoAll) ||
         (action == "toggleCopyMode" && surfaceOf(*current.current).copyMode().isOn());
}

// What is shown of them.

QString TerminalTabs::title() const {
  if (count() == 0) return {};
  const Tab& current = tab(currentIndex());
  return current.name.isEmpty() ? surfaceOf(*current.current).title() : current.name;
}

void TerminalTabs::updateTitle(int index) {
  if (index < 0) return;
  const Tab& shown = tab(index);
  QString title = shown.name.isEmpty() ? surfaceOf(*shown.current).title() : shown.name;
  if (title.isEmpty()) title = ownTitle(*shown.current);
  const bool isZoomed = shown.view->zoomed() != nullptr;
  m_strip->setTitle(index, title, isZoomed ? tr(" (1 of %1)").arg(panesOf(index).size()) : QString());
  if (index != currentIndex()) return;
  updateStrip();
  Q_EMIT titleChanged();
}

// For a program that sets none: the shell, and the folder it has reported.
QString TerminalTabs::ownTitle(TerminalPane& pane) {
  const QString shell = QString::fromStdString(pane.terminal().title());
  const std::string& folder = surfaceOf(pane).display().source().screen()->workingDirectory;
  const QString name = QString::fromStdString(folder.substr(folder.rfind('/') + 1)).simplified();
  return name.isEmpty() ? shell : tr("%1 – %2").arg(name, shell);
}

void TerminalTabs::updateMarks(int index) {
  if (index < 0) return;
  TabMarks marks;
  const std::vector<TerminalPane*> all = panesOf(index);
  for (TerminalPane* pane : all) {
    if (const auto found = m_watched.find(pane); found != m_watched.end()) marks = joined(marks, found->second.marks);
  }
  marks.panes = static_cast<int>(all.size());
  m_strip->setMarks(index, marks);
}

void TerminalTabs::setDimsOthers(bool dims) {
  m_dimsOthers = dims;
  if (count() > 0) updateDimming();
}

void TerminalTabs::updateDimming() {
  const std::vector<TerminalPane*> all = panesOf(currentIndex());
  const bool dims = m_dimsOthers && all.size() > 1 && !tab(currentIndex()).typesIntoAll;
  for (TerminalPane* pane : all) {
    pane->surface().canvas().setDimmed(dims && pane != &currentPane());
  }
}

void TerminalTabs::updateColors() {
  const QColor ground = surface().ground();
  m_strip->setGround(ground);
  QPalette palette = this->palette();
  palette.setColor(QPalette::Window, mixed(ground, palette.color(QPalette::WindowText), 0.09));
  m_bar->setPalette(palette);
  for (const Tab& each : m_tabs) {
    each.view->setGround(QColor::fromRgba(surface().canvas().colors().background));
  }
}

void TerminalTabs::clear() {
  // The command reaches every window; here it is for the one that the user is in.
  if (window()->isActiveWindow()) surface().clear();
}

void TerminalTabs::holdGridSize(bool held) {
  for (TerminalPane* pane : panes()) {
    pane->surface().canvas().holdGridSize(held);
  }
}

std::string TerminalTabs::folderOfCurrent() {
  return count() == 0 ? std::string() : surface().folder();
}

}  // namespace zolt
