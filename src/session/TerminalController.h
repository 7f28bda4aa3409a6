#pragma once

#include <QObject>
#include <QUuid>
#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/TerminalSize.h"
#include "emulation/TerminalScreenBuffer.h"
#include "platform/Clock.h"
#include "session/PTYSession.h"
#include "session/Shell.h"
#include "session/TerminalKey.h"

namespace zolt {

/// The model of one terminal: its session, its character grid, and what is sent to its shell.
///
/// Main thread. The shell runs when the constructor returns. A shell that ends with a status other than 0 is started
/// again half a second later, without limit, in the same session. Releasing the controller ends the shell.
class TerminalController : public QObject {
  Q_OBJECT

 public:
  enum class Restart { AfterFailure, Never };
  /// The delay between a shell's failure and its restart.
  static constexpr std::chrono::milliseconds restartDelay{500};

  /// Runs `shell`, or the catalogue's current default, on a terminal of `size`; if that is unset, the shell does not
  /// know its size until `resize`. Each start, restarts included, is in `workingDirectory` (this process's if empty)
  /// with `environment`. `clock` must outlive the controller.
  explicit TerminalController(std::optional<Shell> shell, Restart restart = Restart::AfterFailure,
                              const TerminalSize& size = {}, std::string workingDirectory = {},
                              Environment environment = processEnvironment(), Clock& clock = Clock::steady());
  ~TerminalController() override;

  const QUuid& id() const { return m_id; }
  PTYSession& ptySession() { return *m_ptySession; }
  /// "Terminal" until the shell has started, then the shell's name.
  const std::string& title() const { return m_title; }
  /// Declared for observers; nothing changes it.
  bool isActive() const { return m_isActive; }
  /// Receives the output only until a view takes over the session's output.
  TerminalScreenBuffer& screenBuffer() { return *m_screenBuffer; }

  /// Sends typed text.
  void sendInput(std::string_view text);
  /// Sends the key's sequence; see TerminalKey for the keys that abort the program.
  void sendKey(const TerminalKey& key);
  /// Resizes grid and terminal to `rows` by `cols`, both 1 or more.
  void resize(int rows, int cols) { resize({.rows = rows, .columns = cols}); }
  /// The same, with the size of the text in pixels.
  void resize(const TerminalSize& size);
  /// Sends ESC c (RIS) to the shell, as input, and empties the grid.
  void clear();

  const std::deque<TerminalScreenBuffer::Row>& getScreenContent() const { return m_screenBuffer->cells(); }
  TerminalScreenBuffer::Cursor getCursorPosition() const { return m_screenBuffer->cursorPosition; }

 Q_SIGNALS:
  /// Before a published property changes, and once for each chunk of output.
  void objectWillChange();
  /// After the shell's exit has been reported, before any restart.
  void shellEnded(int status);

 private:
  void setupBindings();
  void startSession();
  void handleOutput(const Bytes& data);
  void handleExit(std::int32_t code);

  QUuid m_id = QUuid::createUuid();
  std::unique_ptr<PTYSession> m_ptySession;
  std::string m_title = "Terminal";
  bool m_isActive = false;
  std::vector<QMetaObject::Connection> m_cancellables;  // kept for subscriptions; none is stored
  Restart m_restart;
  Shell m_shell;
  std::unique_ptr<Timer> m_restartTimer;
  std::unique_ptr<TerminalScreenBuffer> m_screenBuffer;
};

}  // namespace zolt
