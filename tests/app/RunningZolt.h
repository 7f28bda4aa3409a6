#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

#include "support/WaitFor.h"

namespace zolt::test {

/// How a program has ended, and what it has printed.
struct Ended {
  int status = -1;
  std::string output;
  std::string error;

  nlohmann::json answer() const { return nlohmann::json::parse(output, nullptr, false); }
};

/// The program itself, as the one instance of a runtime folder, home and settings of its own; and `zolt msg` to it.
class RunningZolt {
 public:
  RunningZolt() {
    set("XDG_RUNTIME_DIR", folder("runtime"));
    set("XDG_CONFIG_HOME", folder("config"));
    set("HOME", home());
    m_program.setProcessChannelMode(QProcess::MergedChannels);
  }
  ~RunningZolt() { stop(); }

  QString home() const { return folder("home"); }
  QString runtimeFolder() const { return folder("runtime"); }
  void set(const char* variable, const QString& value) { m_environment.insert(QLatin1String(variable), value); }

  void start(QStringList arguments) {
    m_program.setProcessEnvironment(m_environment);
    m_program.setWorkingDirectory(home());
    m_program.start(QStringLiteral(ZOLT_PROGRAM), arguments);
    ASSERT_TRUE(m_program.waitForStarted(kPatience.count()));
    ASSERT_TRUE(waitFor([this] { return ask({QStringLiteral("list")}).status == 0; })) << printed().toStdString();
  }
  /// Ends the program as a user logging out does; true if it ends well.
  bool stop() {
    if (m_program.state() == QProcess::NotRunning) return true;
    m_program.terminate();
    return m_program.waitForFinished(kPatience.count()) && m_program.exitStatus() == QProcess::NormalExit;
  }
  /// Everything that it has printed, but for what every run on this platform prints.
  QByteArray printed() {
    m_printed += m_program.readAllStandardOutput();
    QByteArray others;
    for (const QByteArray& line : m_printed.split('\n')) {
      const bool isUsual = line.startsWith("This plugin does not support ") || line.startsWith("Terminal exited ");
      if (!isUsual && !line.isEmpty()) others += line + "\n";
    }
    return others;
  }

  /// Runs `zolt msg`, in the home folder.
  Ended ask(QStringList arguments, const QByteArray& input = {}, const QProcessEnvironment& more = {}) const {
    QProcessEnvironment environment = m_environment;
    environment.insert(more);
    QProcess asking;
    asking.setProcessEnvironment(environment);
    asking.setWorkingDirectory(home());
    asking.start(QStringLiteral(ZOLT_PROGRAM), QStringList(QStringLiteral("msg")) + arguments);
    asking.write(input);
    asking.closeWriteChannel();
    EXPECT_TRUE(waitFor([&] { return asking.state() == QProcess::NotRunning; }));
    return {.status = asking.exitCode(),
            .output = asking.readAllStandardOutput().toStdString(),
            .error = asking.readAllStandardError().toStdString()};
  }
  /// What an accepted request answers.
  nlohmann::json done(QStringList arguments, const QByteArray& input = {}, const QProcessEnvironment& more = {}) const {
    const Ended ended = ask(std::move(arguments), input, more);
    EXPECT_EQ(ended.status, 0) << ended.output << ended.error;
    return ended.answer();
  }
  nlohmann::json windows() const { return done({QStringLiteral("list")})["windows"]; }

 private:
  QString folder(const char* name) const {
    const QString path = m_folder.filePath(QLatin1String(name));
    QDir().mkdir(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return path;
  }

  QTemporaryDir m_folder;
  QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
  QProcess m_program;
  QByteArray m_printed;
};

}  // namespace zolt::test
