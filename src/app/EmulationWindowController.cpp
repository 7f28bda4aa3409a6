#include "app/EmulationWindowController.h"

#include <QApplication>
#include <QPointer>
#include <algorithm>
#include <cmath>
#include <utility>

#include "app/AppDelegate.h"
#include "app/PaneLife.h"
#include "app/PaneNotices.h"
#include "platform/MainQueue.h"
#include "platform/ProcessName.h"

namespace zolt {

std::vector<std::string> runningPrograms(const std::vector<TerminalPane*>& panes) {
  std::vector<std::string> names;
  for (TerminalPane* pane : panes) {
    const PTYSession& session = pane->terminal().ptySession();
    const PaneLife* life = PaneLife::of(*pane);
    const auto* window = qobject_cast<const TerminalWindow*>(pane->window());
    const bool isProgram =
        (life != nullptr && !life->runsShell()) || (window != nullptr && window->kind().isForProgram);
    const auto program = isProgram ? session.shellProcess() : session.foregroundProgram();
    if (program) names.push_back(processName(*program));
  }
  return names;
}

std::chrono::milliseconds keptFor(const EmulationSettings& settings) {
  return std::chrono::milliseconds(std::llround(settings.reopenSeconds * 1000));
}

EmulationWindowController::EmulationWindowController(TerminalWindow& window, const EmulationSettingsStore& settings,
                                                     ClosedTerminals& closed)
    : QObject(&window),
      m_window(window),
      m_tabs(static_cast<TerminalTabs&>(window.contentViewController().rootView().area())),
      m_settings(settings),
      m_closed(closed),
      m_blur(window) {
  connect(&m_settings, &EmulationSettingsStore::changed, this, &EmulationWindowController::apply);
  apply();
  connect(&m_tabs, &TerminalTabs::titleChanged, this, &EmulationWindowController::showTitle);
  connect(&m_tabs, &TerminalTabs::bellRang, this, [this] {
    if (!m_window.isActiveWindow()) QApplication::alert(&m_window);
  });
  showTitle();
  m_window.setCloseCheck([this] { return mayClose(); });
  if (m_window.kind().isForProgram) {  // it ends with its program
    connect(&m_tabs, &TerminalTabs::paneCloseWanted, &m_window, &QWidget::close);
    connect(&m_tabs, &TerminalTabs::tabCloseWanted, &m_window, &QWidget::close);
    followNotices(m_tabs.currentPane());
    return;
  }
  connect(&m_window, &TerminalWindow::closed, this, [this] {
    if (m_isOver) {
      Q_EMIT over();
    } else {
      Q_EMIT this->closed();
    }
  });
  connect(&m_tabs, &TerminalTabs::paneAdded, this, [this](TerminalPane* pane) { welcome(*pane); });
  connect(&m_tabs, &TerminalTabs::paneLeaving, this, [this](TerminalPane* pane) { part(*pane); });
  connect(&m_tabs, &TerminalTabs::paneCloseWanted, this, [this](TerminalPane* pane) { askToClosePane(*pane); });
  connect(&m_tabs, &TerminalTabs::tabCloseWanted, this, &EmulationWindowController::askToCloseTab);
  connect(&m_tabs, &TerminalTabs::emptied, this, [this] {
    m_isOver = true;
    m_window.hide();  // there is nothing to paint
    // Not now: whoever took the last tab is not done yet.
    MainQueue::async(MainQueue::Owner(this), [this] { m_window.closeNow(); });
  });
  for (TerminalPane* pane : m_tabs.panes()) {
    welcome(*pane);
  }
}

void EmulationWindowController::apply() {
  const EmulationSettings settings = m_settings.current();
  m_blur.setWanted(settings.blurBackground && settings.opacity < 1);
  m_tabs.setDimsOthers(settings.dimUnfocusedPanes);
  m_tabs.setAlwaysShowsStrip(settings.alwaysShowTabs);
}

void EmulationWindowController::showTitle() {
  if (m_tabs.count() == 0) return;
  // "[*]" stands for the mark of a changed document.
  const QString shown = m_tabs.title().simplified().replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
  m_window.setWindowTitle(shown.isEmpty() ? QStringLiteral("Zolt") : shown);
}

void EmulationWindowController::followNotices(TerminalPane& pane) {
  PaneNotices* notices = PaneNotices::of(pane);
  if (notices == nullptr) return;
  connect(notices, &PaneNotices::clicked, this, [this, &pane](const QString& token) {
    m_tabs.bringUp(pane);
    AppDelegate::bringToFront(m_window, token.toStdString());
  });
}

void EmulationWindowController::welcome(TerminalPane& pane) {
  followNotices(pane);
  PaneLife* life = PaneLife::of(pane);
  if (life == nullptr) return;
  connect(life, &PaneLife::over, this, [this, &pane] { paneIsOver(pane); });
  connect(life, &PaneLife::stays, this, [this, &pane](std::optional<int> status) {
    if (status) m_tabs.setExitStatus(pane, *status);
  });
  if (life->status()) m_tabs.setExitStatus(pane, *life->status());
  if (life->isOver()) paneIsOver(pane);
}

void EmulationWindowController::part(TerminalPane& pane) {
  if (PaneNotices* notices = PaneNotices::of(pane)) notices->disconnect(this);
  if (PaneLife* life = PaneLife::of(pane)) life->disconnect(this);
}

// This may be called from an event of the pane, so the pane is deleted later.
void EmulationWindowController::paneIsOver(TerminalPane& pane) {
  const int index = m_tabs.indexOf(pane);
  if (index < 0) return;
  if (m_tabs.panesOf(index).size() > 1) {
    m_tabs.takePane(pane).pane.release()->deleteLater();
  } else if (m_tabs.count() > 1) {
    m_tabs.takeTab(index).view.release()->deleteLater();
  } else {
    m_isOver = true;
    m_window.closeNow();
  }
}

void EmulationWindowController::askFirst(ClosedThing thing, const std::vector<TerminalPane*>& panes,
                                         std::function<void()> close) {
  const std::vector<std::string> programs = runningPrograms(panes);
  if (programs.empty() || !m_settings.current().warnBeforeClosing) return close();
  std::optional<int> seconds;
  if (!m_window.kind().isForProgram) seconds = static_cast<int>(m_settings.current().reopenSeconds);
  askBeforeClosing(m_window, thing, programs, seconds, std::move(close));
}

void EmulationWindowController::askToClosePane(TerminalPane& pane) {
  const int index = m_tabs.indexOf(pane);
  if (m_tabs.panesOf(index).size() == 1) return askToCloseTab(index);
  askFirst(ClosedThing::Pane, {&pane}, [this, closing = QPointer(&pane)] {
    if (!closing || m_tabs.indexOf(*closing) < 0 || m_tabs.panesOf(m_tabs.indexOf(*closing)).size() == 1) return;
    m_closed.keep(ClosedTerminals::Pane{.pane = m_tabs.takePane(*closing), .area = &m_tabs},
                  keptFor(m_settings.current()));
  });
}

void EmulationWindowController::askToCloseTab(int index) {
  if (m_tabs.count() == 1) {
    m_window.close();
    return;
  }
  askFirst(ClosedThing::Tab, m_tabs.panesOf(index), [this, view = QPointer(&m_tabs.view(index))] {
    // Others may have come or gone meanwhile.
    for (int at = 0; at < m_tabs.count() && m_tabs.count() > 1; ++at) {
      if (&m_tabs.view(at) != view) continue;
      m_closed.keep(ClosedTerminals::Tab{.tab = m_tabs.takeTab(at), .area = &m_tabs, .index = at},
                    keptFor(m_settings.current()));
      return;
    }
  });
}

bool EmulationWindowController::mayClose() {
  const std::vector<TerminalPane*> panes = m_tabs.panes();
  if (runningPrograms(panes).empty() || !m_settings.current().warnBeforeClosing) return true;
  askFirst(ClosedThing::Window, panes, [this] { m_window.closeNow(); });
  return false;
}

}  // namespace zolt
