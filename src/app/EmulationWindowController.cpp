#include "app/EmulationWindowController.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

#include "app/Questions.h"
#include "app/WhenDrained.h"
#include "platform/MainQueue.h"
#include "platform/ProcessName.h"

namespace zolt {

namespace {

constexpr int kSignalStatusBase = 128;
// A shell without a prompt prints nothing.
constexpr std::chrono::milliseconds kPromptLimit{1000};

}  // namespace

EmulationWindowController::EmulationWindowController(TerminalWindow& window, const EmulationSettingsStore& settings,
                                                     Clock& clock)
    : QObject(&window), m_window(window), m_settings(settings), m_clock(clock), m_start(clock.now()), m_blur(window) {
  connect(&m_settings, &EmulationSettingsStore::changed, this, &EmulationWindowController::followBlur);
  followBlur();
  connect(&surface(), &EmulationSurface::titleChanged, this, &EmulationWindowController::showTitle);
  connect(&surface(), &EmulationSurface::bellRang, this, [this] {
    if (!m_window.isActiveWindow()) QApplication::alert(&m_window);
  });
  if (m_window.kind().isForProgram) return;  // it ends with its program
  m_window.setCloseCheck([this] { return mayClose(); });
  connect(&m_window, &TerminalWindow::closed, this, [this] {
    m_hasEnded = true;
    terminal().ptySession().terminate();
  });
  connect(&terminal(), &TerminalController::shellEnded, this, &EmulationWindowController::shellEnded);
  if (!terminal().ptySession().isRunning()) stayOpen(tr("The shell could not be started."));
}

TerminalController& EmulationWindowController::terminal() {
  return m_window.contentViewController().rootView().terminal();
}

EmulationSurface& EmulationWindowController::surface() {
  return static_cast<EmulationSurface&>(m_window.contentViewController().rootView().surface());
}

void EmulationWindowController::typeFirst(const std::string& command) {
  if (command.empty()) return;
  m_command = command + "\r";
  const auto type = [this] {
    if (!m_command.empty()) terminal().sendInput(std::exchange(m_command, {}));
  };
  connect(&surface(), &EmulationSurface::screenChanged, this, [this, type] {
    if (!surface().isUntouched()) type();
  });
  MainQueue::after(MainQueue::Owner(this), kPromptLimit, type);
}

void EmulationWindowController::followBlur() {
  const EmulationSettings settings = m_settings.current();
  m_blur.setWanted(settings.blurBackground && settings.opacity < 1);
}

void EmulationWindowController::showTitle(const QString& title) {
  // "[*]" stands for the mark of a changed document.
  QString shown = title.simplified().replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
  m_window.setWindowTitle(shown.isEmpty() ? QStringLiteral("Zolt") : shown);
}

bool EmulationWindowController::mayClose() {
  if (!m_settings.current().warnBeforeClosing) return true;
  const auto program = terminal().ptySession().foregroundProgram();
  if (!program) return true;
  askBeforeClosing(m_window, processName(*program), [this] { m_window.closeNow(); });
  return false;
}

void EmulationWindowController::shellEnded(int status) {
  if (m_hasEnded) return;
  const bool wasKilled = terminal().ptySession().terminationReason() == ChildProcess::Reason::Signal;
  const bool failedAtOnce = (wasKilled || status != 0) && m_clock.now() - m_start < shortestLife;
  if (m_settings.current().closeWindowWhenShellExits && !failedAtOnce) {
    m_window.closeNow();
    return;
  }
  const int shown = wasKilled ? kSignalStatusBase + status : status;
  whenDrained(MainQueue::Owner(this), terminal().ptySession(),
              [this, shown] { stayOpen(tr("The shell ended with status %1.").arg(shown)); });
}

// The terminal is closed, so that nothing answers keys any more; Return closes the window.
void EmulationWindowController::stayOpen(const QString& notice) {
  if (std::exchange(m_hasEnded, true)) return;
  terminal().ptySession().terminate();
  surface().addLastNotice(notice);
  surface().canvas().installEventFilter(this);
}

bool EmulationWindowController::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      m_window.closeNow();
      return true;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace zolt
