#include "app/PaneLife.h"

#include <QKeyEvent>
#include <utility>

#include "app/WhenDrained.h"
#include "platform/MainQueue.h"

namespace zolt {

namespace {

constexpr int kSignalStatusBase = 128;
// A shell without a prompt prints nothing.
constexpr std::chrono::milliseconds kPromptLimit{1000};

}  // namespace

PaneLife::PaneLife(TerminalPane& pane, const EmulationSettingsStore& settings, Clock& clock)
    : QObject(&pane), m_pane(pane), m_settings(settings), m_clock(clock), m_start(clock.now()) {
  connect(&m_pane.terminal(), &TerminalController::shellEnded, this, &PaneLife::shellEnded);
  if (!session().isRunning()) stayOpen(tr("The shell could not be started."), std::nullopt);
}

void PaneLife::typeFirst(const std::string& command) {
  if (command.empty()) return;
  m_command = command + "\r";
  const auto type = [this] {
    if (!m_command.empty()) m_pane.terminal().sendInput(std::exchange(m_command, {}));
  };
  connect(&surface(), &EmulationSurface::screenChanged, this, [this, type] {
    if (!surface().isUntouched()) type();
  });
  MainQueue::after(MainQueue::Owner(this), kPromptLimit, type);
}

void PaneLife::shellEnded(int status) {
  if (m_hasEnded) return;
  const bool wasKilled = session().terminationReason() == ChildProcess::Reason::Signal;
  const bool failedAtOnce = (wasKilled || status != 0) && m_clock.now() - m_start < shortestLife;
  if (m_settings.current().closeWindowWhenShellExits && !failedAtOnce) {
    m_hasEnded = true;
    end();
    return;
  }
  const int shown = wasKilled ? kSignalStatusBase + status : status;
  whenDrained(MainQueue::Owner(this), session(),
              [this, shown] { stayOpen(tr("The shell ended with status %1.").arg(shown), shown); });
}

// The terminal is closed, so that nothing answers keys any more; Return closes the pane.
void PaneLife::stayOpen(const QString& notice, std::optional<int> status) {
  if (std::exchange(m_hasEnded, true)) return;
  session().terminate();
  surface().addLastNotice(notice);
  surface().canvas().installEventFilter(this);
  m_status = status;
  Q_EMIT stays(status);
}

void PaneLife::end() {
  if (std::exchange(m_isOver, true)) return;
  Q_EMIT over();
}

bool PaneLife::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      end();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace zolt
