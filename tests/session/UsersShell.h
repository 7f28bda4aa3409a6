#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Environment.h"
#include "session/SessionProbe.h"
#include "session/ShellIntegration.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// A user's home folder: empty but for what a test puts there, and removed with this.
class Home {
 public:
  Home() { write(".local/share/fish/generated_completions/none", ""); }  // or fish reads all manual pages

  std::string path() const { return std::filesystem::canonical(m_folder.path().toStdString()); }
  std::string file(const std::string& name) const { return path() + "/" + name; }
  std::string content(const std::string& name) const { return fileContent(file(name)); }
  void write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories(std::filesystem::path(file(name)).parent_path());
    std::ofstream(file(name)) << content;
  }

 private:
  QTemporaryDir m_folder;
};

/// Where systems keep a shell. The tests need all three.
using Places = std::vector<std::string>;
inline const Places kBashPlaces{"/usr/bin/bash", "/opt/homebrew/bin/bash", "/usr/local/bin/bash", "/bin/bash"};
inline const Places kZshPlaces{"/bin/zsh", "/usr/bin/zsh"};
inline const Places kFishPlaces{"/usr/bin/fish", "/opt/homebrew/bin/fish", "/usr/local/bin/fish"};

/// The shell at the first of these places that has one.
inline Shell shellAt(const Places& places, std::vector<std::string> args = {}) {
  const auto place = std::ranges::find_if(places, isExecutableFile);
  EXPECT_NE(place, places.end()) << places.front() << " is not installed";
  return Shell{
      .name = "Shell", .executable = place == places.end() ? "" : *place, .args = std::move(args), .icon = "terminal"};
}

/// The reports of one kind, OSC `number`, in `output`: their text, in order.
inline std::vector<std::string> reports(std::string_view output, std::string_view number) {
  const std::string start = "\x1B]" + std::string(number) + ";";
  std::vector<std::string> found;
  for (std::size_t at = output.find(start); at != std::string_view::npos; at = output.find(start, at)) {
    at += start.size();
    const std::size_t end = output.find_first_of("\a\x1B", at);
    if (end == std::string_view::npos) break;
    found.emplace_back(output.substr(at, end - at));
  }
  return found;
}

/// The marks in `output`: "A B C D;1", without options.
inline std::string marks(std::string_view output) {
  std::string found;
  for (const std::string& each : reports(output, "133")) {
    found += (found.empty() ? "" : " ") + (each.starts_with("D;") ? each : each.substr(0, 1));
  }
  return found;
}

/// The option with the command line of each C in `output`.
inline std::vector<std::string> commandLines(std::string_view output) {
  std::vector<std::string> found;
  for (const std::string& each : reports(output, "133")) {
    if (each.starts_with("C")) found.push_back(each.substr(1));
  }
  return found;
}

/// A shell in a terminal, as its user has it: with the user's home folder and little in its environment. It is expected
/// to show the prompt "ready> ".
class UsersShell {
 public:
  enum class Integration { Off, On };
  static constexpr char kPrompt[] = "ready> ";

  UsersShell(const Home& home, const Shell& shell, Integration integration, Environment more = {}) {
    Environment environment = std::move(more);
    environment["HOME"] = home.path();
    environment["LC_ALL"] = "C.UTF-8";
    environment["PATH"] = std::getenv("PATH");
    const bool on = integration == Integration::On;
    const ShellStart start =
        integratedStart(shell, environment, on ? installShellIntegration(m_scripts.path().toStdString()) : "");
    Shell started = shell;
    started.args = start.args;
    m_probe.session.environment = start.environment;
    m_probe.session.workingDirectory = home.path();
    m_probe.session.resize(24, 200);
    EXPECT_TRUE(m_probe.session.start(started));
    m_started = prompted();
  }

  /// Waits for the shell to end: it may write its history while it does.
  ~UsersShell() {
    m_probe.session.terminate();
    EXPECT_TRUE(waitFor([] { return childProcesses().empty(); }));
  }
  UsersShell(const UsersShell&) = delete;
  UsersShell& operator=(const UsersShell&) = delete;

  /// What the shell has printed up to its first prompt.
  const std::string& beginning() const { return m_started; }

  /// Types a line and returns what is printed up to the next prompt.
  std::string run(const std::string& line) { return enter(line + "\r"); }
  /// The same for keys.
  std::string enter(const std::string& keys) {
    m_probe.session.write(keys);
    return prompted();
  }

  /// Types keys after which no prompt is expected.
  void type(const std::string& keys) { m_probe.session.write(keys); }

  /// Whether the shell prints `text` after the last prompt.
  bool shows(const std::string& text) { return m_probe.shows(text); }

  /// Types a line that ends the shell, and returns its status.
  int statusAfter(const std::string& line) {
    m_probe.session.write(line + "\r");
    return m_probe.ends() ? m_probe.exits.front() : -1;
  }

 private:
  // All output up to and with the next prompt and the mark behind it. Who announces the beginning of a prompt with
  // "k=i", in these tests, marks its end, too.
  std::string prompted() {
    EXPECT_TRUE(m_probe.shows(kPrompt)) << m_probe.output;
    const std::vector<std::string> before = reports(m_probe.output, "133");
    if (!before.empty() && before.back().starts_with("A;k=i")) {
      EXPECT_TRUE(m_probe.shows(std::string(kPrompt) + "\x1B]133;B")) << m_probe.output;
    }
    EXPECT_TRUE(SessionProbe::deliversWhatWasSubmitted());
    return std::exchange(m_probe.output, {});
  }

  QTemporaryDir m_scripts;
  SessionProbe m_probe;
  std::string m_started;
};

/// The same, with integration and without it.
struct WithAndWithout {
  std::string with;
  std::string without;
};

/// What a file in the home folder holds after `lines` were typed into `shell` and it has ended. The file is removed.
inline WithAndWithout contents(const Home& home, const Shell& shell, const std::string& file,
                               const std::vector<std::string>& lines, const Environment& more = {}) {
  const auto content = [&](UsersShell::Integration integration) {
    UsersShell user(home, shell, integration, more);
    for (const std::string& line : lines)
      user.run(line);
    EXPECT_EQ(user.statusAfter("exit 0"), 0);
    std::string found = home.content(file);
    EXPECT_NE(found, "") << file;
    std::filesystem::remove(home.file(file));
    return found;
  };
  return {.with = content(UsersShell::Integration::On), .without = content(UsersShell::Integration::Off)};
}

}  // namespace zolt::test
