#include "session/TerminalController.h"

#include <utility>

#include "base/Diagnostics.h"
#include "platform/MainQueue.h"
#include "session/ShellManager.h"
#include "text/GraphemeClusters.h"

namespace zolt {

TerminalController::TerminalController(std::optional<Shell> shell, Restart restart, const TerminalSize& size,
                                       std::string workingDirectory, Environment environment, Clock& clock)
    : m_ptySession(std::make_unique<PTYSession>()),
      m_restart(restart),
      m_shell(shell ? *std::move(shell) : ShellManager::shared().defaultShell()),
      m_restartTimer(clock.makeTimer([this] { startSession(); })),
      m_screenBuffer(std::make_unique<TerminalScreenBuffer>()) {
  m_screenBuffer->resize(24, 80);
  m_ptySession->workingDirectory = std::move(workingDirectory);
  m_ptySession->environment = std::move(environment);
  m_ptySession->resize(size);
  setupBindings();
  startSession();
}

TerminalController::~TerminalController() {
  m_ptySession->terminate();
}

void TerminalController::setupBindings() {
  const MainQueue::Owner self(this);
  m_ptySession->onOutput = [this, self](const Bytes& data) {
    if (self) handleOutput(data);
  };
  // One turn later, after output that is already queued.
  m_ptySession->onExit = [this, self](std::int32_t code) {
    MainQueue::async(self, [this, code] { handleExit(code); });
  };
}

void TerminalController::startSession() {
  if (!m_ptySession->start(m_shell)) {
    printLine("Failed to start PTY session");
    return;
  }
  Q_EMIT objectWillChange();
  m_title = m_shell.name;
}

void TerminalController::handleOutput(const Bytes& data) {
  // A chunk that is not valid UTF-8 is dropped whole, deliberately, even if only a read split a character.
  if (isValidUtf8(data.view())) m_screenBuffer->parseAndRender(data.view());
  MainQueue::async(MainQueue::Owner(this), [this] { Q_EMIT objectWillChange(); });
}

void TerminalController::handleExit(std::int32_t code) {
  printLine("Terminal exited with code: " + std::to_string(code));
  Q_EMIT shellEnded(code);
  if (code == 0 || m_restart == Restart::Never) return;
  m_restartTimer->start(restartDelay);
}

void TerminalController::sendInput(std::string_view text) {
  m_ptySession->write(text);
}

void TerminalController::sendKey(const TerminalKey& key) {
  m_ptySession->write(key.ansiSequence());
}

void TerminalController::resize(const TerminalSize& size) {
  m_screenBuffer->resize(size.rows, size.columns);
  m_ptySession->resize(size);
}

void TerminalController::clear() {
  m_ptySession->write(
      std::string_view("\x1B"
                       "c"));
  m_screenBuffer->clear();
}

}  // namespace zolt
