#include "app/SessionStore.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QLocale>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <memory>
#include <mutex>
#include <utility>

#include "platform/ProcessFolder.h"
#include "saved/SecretKey.h"

namespace zolt {

namespace {

constexpr std::chrono::seconds kRecordLimit{2};
// Of a window that is shown somewhere, so much must be on a screen.
constexpr QSize kGrip(120, 40);
constexpr QSize kSmallestWindow(200, 100);

void complain(const std::string& what, const std::string& reason) {
  std::fprintf(stderr, "zolt: %s: %s\n", what.c_str(), reason.c_str());
}

// Terminals as their threads hand them in.
struct Records {
  std::mutex mutex;
  std::condition_variable arrived;
  std::map<std::string, vt::TerminalRecord> found;
};

SavedPart toSaved(const SplitLayout::Part& part, const std::vector<PaneId>& order) {
  SavedPart saved{.isStacked = part.axis == SplitAxis::Stacked, .share = part.share};
  if (part.pane) saved.pane = static_cast<std::size_t>(std::ranges::find(order, *part.pane) - order.begin());
  for (const SplitLayout::Part& each : part.parts) {
    saved.parts.push_back(toSaved(each, order));
  }
  return saved;
}

SplitLayout::Part toLayout(const SavedPart& saved) {
  SplitLayout::Part part;
  if (saved.pane) part.pane = PaneId{*saved.pane};
  part.axis = saved.isStacked ? SplitAxis::Stacked : SplitAxis::SideBySide;
  part.share = saved.share;
  std::ranges::transform(saved.parts, std::back_inserter(part.parts), toLayout);
  return part;
}

SavedPane toSaved(TerminalPane& pane) {
  const EmulationSurface& surface = TerminalTabs::surfaceOf(pane);
  return {.file = SessionFolder::newFileName(),
          .folder = surface.folder(),
          .size = TerminalTabs::surfaceOf(pane).display().source().screen()->size,
          .zoom = TerminalTabs::surfaceOf(pane).canvas().zoom()};
}

SavedWindow toSaved(TerminalWindow& window, TerminalTabs& tabs, std::map<std::string, TerminalPane*>& panes) {
  const bool isPlain = !window.isMaximized() && !window.isFullScreen();
  const QRect place = isPlain ? window.geometry() : window.normalGeometry();
  SavedWindow saved{.x = place.x(),
                    .y = place.y(),
                    .width = place.width(),
                    .height = place.height(),
                    .isMaximized = window.isMaximized(),
                    .isFullScreen = window.isFullScreen(),
                    .current = static_cast<std::size_t>(tabs.currentIndex())};
  for (int index = 0; index < tabs.count(); ++index) {
    const SplitLayout& layout = tabs.view(index).layoutOfPanes();
    const std::vector<TerminalPane*> all = tabs.panesOf(index);
    SavedTab& tab = saved.tabs.emplace_back(SavedTab{.name = tabs.name(index).toStdString(),
                                                     .layout = toSaved(layout.root(), layout.panes()),
                                                     .isZoomed = tabs.view(index).zoomed() != nullptr});
    tab.current = static_cast<std::size_t>(std::ranges::find(all, &tabs.currentPaneOf(index)) - all.begin());
    for (TerminalPane* pane : all) {
      panes[tab.panes.emplace_back(toSaved(*pane)).file] = pane;
    }
  }
  return saved;
}

std::map<std::string, vt::TerminalRecord> recordsOf(const std::map<std::string, TerminalPane*>& panes) {
  const auto records = std::make_shared<Records>();
  for (const auto& [file, pane] : panes) {
    TerminalTabs::surfaceOf(*pane).display().emulator().change([records, name = file](vt::Terminal& terminal) {
      vt::TerminalRecord record = terminal.record();
      const std::lock_guard lock(records->mutex);
      records->found.emplace(name, std::move(record));
      records->arrived.notify_one();
    });
  }
  std::unique_lock lock(records->mutex);
  records->arrived.wait_for(lock, kRecordLimit, [&] { return records->found.size() == panes.size(); });
  return records->found;
}

// Screens come and go: a window that could not be grasped any more stands in the middle of the main one.
std::optional<QRect> placeOf(const SavedWindow& window) {
  const QRect place(window.x, window.y, window.width, window.height);
  const QScreen* main = QApplication::primaryScreen();
  if (main == nullptr || place.width() < kSmallestWindow.width() || place.height() < kSmallestWindow.height()) {
    return std::nullopt;
  }
  const auto screens = QApplication::screens();
  const bool isInReach = std::ranges::any_of(screens, [&place](const QScreen* screen) {
    const QRect seen =
        screen->availableGeometry().intersected(QRect(place.topLeft(), QSize(place.width(), kGrip.height())));
    return seen.width() >= kGrip.width() && seen.height() >= kGrip.height() / 2;
  });
  if (isInReach) return place;
  const QRect room = main->availableGeometry();
  QRect moved(QPoint(), place.size().boundedTo(room.size()));
  moved.moveCenter(room.center());
  return moved;
}

QString noticeFor(std::int64_t time) {
  const QDateTime saved = QDateTime::fromSecsSinceEpoch(time);
  const QLocale locale;
  return SessionStore::tr("Restored from %1, %2")
      .arg(locale.toString(saved.date(), QLocale::LongFormat), locale.toString(saved.time(), QLocale::ShortFormat));
}

}  // namespace

SessionStore::SessionStore(const std::string& folder, const EmulationSettingsStore& settings)
    : m_folder(folder), m_settings(settings) {
  connect(&settings, &EmulationSettingsStore::changed, this, &SessionStore::forgetUnlessWanted);
  forgetUnlessWanted();
}

void SessionStore::forgetUnlessWanted() const {
  if (!m_settings.current().restorePreviousSession) m_folder.clear();
}

Result<BlockCipher::Key> SessionStore::key() const {
  return keyFromFile(m_folder.path() + "/key");
}

void SessionStore::capture(const std::vector<TerminalWindow*>& windows) {
  if (!isWanted()) return;
  std::map<std::string, TerminalPane*> panes;
  Captured captured{.session = {.time = QDateTime::currentSecsSinceEpoch()}};
  for (TerminalWindow* window : windows) {
    auto& tabs = static_cast<TerminalTabs&>(window->contentViewController().rootView().area());
    if (tabs.count() > 0) captured.session.windows.push_back(toSaved(*window, tabs, panes));
  }
  captured.terminals = recordsOf(panes);
  m_captured = std::move(captured);
}

void SessionStore::write() {
  const auto captured = std::exchange(m_captured, std::nullopt);
  if (!captured) return;
  if (captured->session.windows.empty()) return m_folder.clear();
  if (auto made = m_folder.make(); !made) return complain("the session cannot be saved", made.reason());
  const auto secret = key();
  if (!secret) return complain("the session cannot be saved", secret.reason());
  const auto saved = m_folder.save(captured->session, captured->terminals, secret.value());
  if (!saved) complain("the session cannot be saved", saved.reason());
}

std::vector<RestoredWindow> SessionStore::restore(PaneMaker& panes) const {
  if (!isWanted() || !m_folder.exists()) return {};
  const auto secret = key();
  if (!secret) {
    complain("the last session cannot be restored", secret.reason());
    return {};
  }
  const SessionFolder::Kept kept = m_folder.load(secret.value());
  if (kept.isWithoutLayout) complain("the windows of the last session cannot be restored", "their places are damaged");
  const QString notice = kept.isWithoutLayout ? tr("Restored from an earlier session") : noticeFor(kept.session.time);
  std::vector<RestoredWindow> windows;
  for (const SavedWindow& saved : kept.session.windows) {
    RestoredWindow window{.tabs = {}, .current = static_cast<int>(saved.current), .place = placeOf(saved), .state = {}};
    window.state.setFlag(Qt::WindowMaximized, saved.isMaximized);
    window.state.setFlag(Qt::WindowFullScreen, saved.isFullScreen);
    for (const SavedTab& tab : saved.tabs) {
      window.tabs.push_back(restoredTab(tab, panes, notice, secret.value()));
    }
    windows.push_back(std::move(window));
  }
  return windows;
}

DetachedTab SessionStore::restoredTab(const SavedTab& tab, PaneMaker& panes, const QString& notice,
                                      const BlockCipher::Key& key) const {
  std::vector<QWidget*> widgets;
  TerminalPane* current = nullptr;
  for (const SavedPane& saved : tab.panes) {
    auto terminal = m_folder.terminal(saved.file, key);
    EarlierText earlier{.terminal = nullptr, .notice = notice.toStdString()};
    if (terminal) {
      earlier.terminal = std::make_shared<const vt::StoredTerminal>(std::move(terminal.value()));
    } else {
      earlier.notice = lostTextNotice(terminal.reason());
    }
    TerminalPane* pane = panes
                             .make({.size = saved.size.rows > 0 ? saved.size : TerminalSize{.rows = 24, .columns = 80},
                                    .folder = canEnter(saved.folder) ? saved.folder : QDir::homePath().toStdString(),
                                    .earlier = std::move(earlier)})
                             .release();
    pane->surface().canvas().setZoom(saved.zoom);
    if (widgets.size() == tab.current) current = pane;
    widgets.push_back(pane);
  }
  auto view = std::make_unique<SplitView>(widgets, SplitLayout(toLayout(tab.layout)));
  if (tab.isZoomed) view->setZoomed(current);
  return {.view = std::move(view), .name = QString::fromStdString(tab.name), .current = current};
}

}  // namespace zolt
