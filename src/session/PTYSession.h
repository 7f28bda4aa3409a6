#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/TerminalSize.h"
#include "platform/ChildProcess.h"
#include "platform/Environment.h"
#include "platform/FileHandle.h"
#include "platform/PseudoTerminal.h"
#include "session/Shell.h"

namespace zolt {

/// Runs one shell process on a pseudo-terminal and delivers its output as chunks of bytes.
///
/// Main thread; both callbacks are called there. Both ends of the pseudo-terminal stay open until the session is
/// started again or released, even after the shell has ended. Releasing a session ends its shell.
///
/// Failures are printed as lines on standard output: "Failed to open PTY", "Failed to start process: " and
/// "Write error: " with the reason.
class PTYSession : public QObject {
  Q_OBJECT

 public:
  using OutputHandler = std::function<void(const Bytes& chunk)>;
  using ExitHandler = std::function<void(std::int32_t status)>;

  PTYSession();
  ~PTYSession() override;

  /// Opens a pseudo-terminal and launches `shell` on it; returns false if either fails. Calling it again replaces both.
  bool start(const Shell& shell);

  /// Writes to the terminal without blocking; does nothing before the first start.
  void write(const Bytes& data);
  /// Writes `text` as UTF-8.
  void write(std::string_view text);
  /// Sets the terminal's size, now and after each later start.
  void resize(const TerminalSize& size);
  void resize(int rows, int cols) { resize({.rows = rows, .columns = cols}); }
  /// Ends the shell and closes the terminal.
  void terminate();
  /// Sends a signal to the terminal's foreground process group, or to the shell if there is none.
  void sendSignal(std::int32_t signal);

  /// From a successful launch until the shell's exit has been handled.
  bool isRunning() const { return m_isRunning; }
  /// Declared for observers; nothing writes it.
  const std::string& output() const { return m_output; }

  /// Receives each non-empty chunk, as it was read: characters and sequences may be split across chunks.
  OutputHandler onOutput;
  /// From now on gives each chunk to `tap` instead of `onOutput`: on the reader's thread as soon as it has been read,
  /// or on the main thread where it was on its way there already; in order, and never two at a time. It must only take
  /// note of the chunk. Once this returns, an earlier tap is not running and will not be called again.
  void setOutputTap(OutputHandler tap);

  /// Receives the exit status, or the number of the signal that killed the shell, after `isRunning` has become false.
  ExitHandler onExit;
  /// The working directory of the next shell; this process's if empty.
  std::string workingDirectory;
  /// What the next shell inherits; the variables that name the terminal are set on top of it.
  Environment environment = processEnvironment();

  /// How the last shell ended.
  ChildProcess::Reason terminationReason() const;
  /// The shell's process while it runs.
  std::optional<pid_t> shellProcess() const;
  /// The process group in the terminal's foreground, if it is not the shell's own: a program that the shell runs.
  std::optional<pid_t> foregroundProgram() const;
  /// Whether all output has been read and submitted for delivery.
  bool isDrained() const;

 Q_SIGNALS:
  /// Before a published property changes.
  void objectWillChange();

 private:
  class Delivery;

  void setupReadHandler();
  void cleanup();
  void setRunning(bool running);

  std::shared_ptr<ChildProcess> m_process;
  std::shared_ptr<Delivery> m_delivery;
  std::unique_ptr<FileHandle> m_masterHandle;
  Descriptor m_slaveHandle;  // shared with the shell: a FileHandle would make its streams non-blocking
  std::string m_output;
  bool m_isRunning = false;
  TerminalSize m_size;
};

}  // namespace zolt
