#include "session/ShellManager.h"

#include <QString>
#include <algorithm>
#include <array>
#include <utility>

namespace zolt {

namespace {

// The last component of a path, ignoring trailing slashes; "/" for "/".
std::string lastPathComponent(std::string path) {
  while (path.size() > 1 && path.back() == '/') {
    path.pop_back();
  }
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos || path.size() == 1 ? path : path.substr(slash + 1);
}

// The first letter of each word in upper case, the rest in lower case.
std::string capitalized(const std::string& text) {
  QString result = QString::fromStdString(text).toLower();
  bool startsWord = true;
  for (QChar& character : result) {
    if (startsWord) character = character.toUpper();
    startsWord = character.isSpace();
  }
  return result.toStdString();
}

Shell fresh(const char* name, const char* executable, const char* icon) {
  return Shell{.name = name, .executable = executable, .args = {}, .icon = icon};
}

}  // namespace

ShellManager::ShellManager(const Environment& environment, const IsExecutable& isExecutable) {
  detectAvailableShells(environment, isExecutable);
}

ShellManager& ShellManager::shared() {
  static ShellManager manager(processEnvironment(), isExecutableFile);
  return manager;
}

void ShellManager::detectAvailableShells(const Environment& environment, const IsExecutable& isExecutable) {
  // The first installed copy of each name counts. Fish and Nushell are deliberately searched in opposite orders.
  const std::array candidates{
      Shell::zsh(),
      Shell::bash(),
      fresh("Fish", "/usr/local/bin/fish", "fish"),
      Shell::fish(),
      fresh("Nushell", "/opt/homebrew/bin/nu", "n.circle"),
      fresh("Nushell", "/usr/local/bin/nu", "n.circle"),
  };
  std::vector<Shell> found;
  for (const Shell& candidate : candidates) {
    const bool named = std::ranges::any_of(found, [&](const Shell& each) { return each.name == candidate.name; });
    if (!named && isExecutable(candidate.executable)) found.push_back(candidate);
  }
  found.push_back(Shell::sh());

  const auto login = environment.find("SHELL");
  const auto isLogin = [&](const Shell& shell) { return shell.executable == login->second; };
  if (login != environment.end() && std::ranges::none_of(found, isLogin)) {
    found.insert(found.begin(), Shell{.name = capitalized(lastPathComponent(login->second)),
                                      .executable = login->second,
                                      .args = {},
                                      .icon = "terminal"});
  }

  Q_EMIT objectWillChange();
  m_availableShells = std::move(found);
  if (login == environment.end()) return;
  const auto match = std::ranges::find_if(m_availableShells, isLogin);
  if (match == m_availableShells.end()) return;
  Q_EMIT objectWillChange();
  m_defaultShell = *match;
}

std::string ShellManager::summary() const {
  std::string text;
  for (const Shell& shell : m_availableShells) {
    text += shell.name + "  " + shell.executable;
    if (shell.id == m_defaultShell.id) text += "  (default)";
    text += '\n';
  }
  return text;
}

Shell ShellManager::makeShell(const Shell& shell) {
  Shell copy = shell;
  copy.id = QUuid::createUuid();
  return copy;
}

}  // namespace zolt
