#pragma once

#include <QProcess>
#include <map>
#include <string>
#include <vector>

#include "support/WaitFor.h"

namespace zolt::test {

struct ProgramResult {
  int status = -1;  ///< -1 if it crashed or did not end
  std::string output;
  std::string errors;
};

/// Runs a program to its end. `environment` sets variables, or removes those with an empty value.
inline ProgramResult runProgram(const char* program, const std::vector<std::string>& arguments,
                                const std::string& input = {},
                                const std::map<std::string, std::string>& environment = {}) {
  QProcess process;
  QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
  for (const auto& [name, value] : environment) {
    if (value.empty()) {
      variables.remove(QString::fromStdString(name));
    } else {
      variables.insert(QString::fromStdString(name), QString::fromStdString(value));
    }
  }
  process.setProcessEnvironment(variables);
  QStringList words;
  for (const std::string& argument : arguments) {
    words << QString::fromStdString(argument);
  }
  process.start(QString::fromUtf8(program), words);
  process.write(input.data(), static_cast<qint64>(input.size()));
  process.closeWriteChannel();
  ProgramResult result;
  if (process.waitForFinished(kPatience.count()) && process.exitStatus() == QProcess::NormalExit)
    result.status = process.exitCode();
  result.output = process.readAllStandardOutput().toStdString();
  result.errors = process.readAllStandardError().toStdString();
  return result;
}

/// The words of a command line, for messages.
inline std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) {
    text += word + ' ';
  }
  return text;
}

}  // namespace zolt::test
