#include "app/CommandLine.h"

#include <algorithm>
#include <array>

namespace zolt {

namespace {

// A command-line word made safe for a one-line message.
std::string onOneLine(std::string word) {
  std::ranges::replace_if(
      word, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
  return word;
}

enum class Takes { Nothing, OneValue, TheRest };

// Applies the option; `values` are its arguments.
using Apply = Result<void> (*)(CommandLine& line, const std::vector<std::string>& values);

struct Option {
  const char* name;
  Takes takes;
  const char* value;
  const char* help;
  Apply apply;
};

const std::array kOptions{
    Option{"-e", Takes::TheRest, "PROGRAM [ARG...]", "run PROGRAM instead of a shell, and exit with its status",
           [](CommandLine& line, const std::vector<std::string>& values) -> Result<void> {
             line.program = values;
             return {};
           }},
    Option{"--working-directory", Takes::OneValue, "DIR", "start in DIR",
           [](CommandLine& line, const std::vector<std::string>& values) -> Result<void> {
             line.workingDirectory = values.front();
             return {};
           }},
    Option{"--screenshot", Takes::OneValue, "FILE", "with -e: save the window as a PNG once PROGRAM has exited",
           [](CommandLine& line, const std::vector<std::string>& values) -> Result<void> {
             line.screenshotFile = values.front();
             return {};
           }},
    Option{"--new-instance", Takes::Nothing, "", "start a separate instance even if one is running",
           [](CommandLine& line, const std::vector<std::string>&) -> Result<void> {
             line.newInstance = true;
             return {};
           }},
    Option{"--service", Takes::Nothing, "", "wait for the desktop to ask for a window",
           [](CommandLine& line, const std::vector<std::string>&) -> Result<void> {
             line.isService = true;
             return {};
           }},
    Option{"--log", Takes::Nothing, "", "show the output as a log in this run",
           [](CommandLine& line, const std::vector<std::string>&) -> Result<void> {
             line.display = Display::Log;
             return {};
           }},
    Option{"--full-emulation", Takes::Nothing, "", "show a full terminal in this run",
           [](CommandLine& line, const std::vector<std::string>&) -> Result<void> {
             line.display = Display::FullEmulation;
             return {};
           }},
    Option{"--version", Takes::Nothing, "", "print the version",
           [](CommandLine& line, const std::vector<std::string>&) -> Result<void> {
             line.action = CommandLine::Action::ShowVersion;
             return {};
           }},
    Option{"--help", Takes::Nothing, "", "print this text",
           [](CommandLine& line, const std::vector<std::string>&) -> Result<void> {
             line.action = CommandLine::Action::ShowHelp;
             return {};
           }},
};

}  // namespace

Result<CommandLine> CommandLine::parse(const std::vector<std::string>& arguments) {
  CommandLine line;
  if (!arguments.empty() && arguments.front() == "msg") {
    line.action = Action::SendMessage;
    line.message.assign(arguments.begin() + 1, arguments.end());
    return line;
  }
  for (std::size_t i = 0; i < arguments.size();) {
    // "--name value" and "--name=value" are the same.
    std::string name = arguments[i++];
    std::vector<std::string> values;
    const std::size_t equals = name.starts_with("--") ? name.find('=') : std::string::npos;
    if (equals != std::string::npos) {
      values.push_back(name.substr(equals + 1));
      name.resize(equals);
    }
    const auto* option = std::ranges::find_if(kOptions, [&](const Option& each) { return name == each.name; });
    if (option == kOptions.end()) return Failure{"unknown option: " + onOneLine(name)};
    if (option->takes == Takes::Nothing && !values.empty()) return Failure{name + " takes no value"};
    if (option->takes == Takes::OneValue && values.empty() && i < arguments.size()) values.push_back(arguments[i++]);
    if (option->takes == Takes::TheRest) {
      values.assign(arguments.begin() + static_cast<std::ptrdiff_t>(i), arguments.end());
      i = arguments.size();
    }
    const bool missing = option->takes != Takes::Nothing && (values.empty() || values.front().empty());
    if (missing) return Failure{name + " needs a value: " + option->value};
    if (const auto applied = option->apply(line, values); !applied) return Failure{applied.reason()};
  }
  if (line.screenshotFile && line.program.empty()) return Failure{"--screenshot needs -e PROGRAM"};
  if (line.isService && (line.newInstance || !line.program.empty())) {
    return Failure{"--service is for the one instance that others find"};
  }
  return line;
}

std::string CommandLine::helpText() {
  std::string text =
      "Usage: zolt [OPTION...] [-e PROGRAM [ARG...]]\n"
      "       zolt msg VERB [...]  ask something of the Zolt that is running; zolt msg --help\n\n";
  for (const Option& option : kOptions) {
    std::string head = std::string("  ") + option.name;
    if (*option.value != '\0') head += std::string(" ") + option.value;
    head.resize(std::max<std::size_t>(head.size() + 2, 28), ' ');
    text += head + option.help + "\n";
  }
  return text;
}

std::string CommandLine::versionText() {
  return "Zolt " ZOLT_VERSION "\n";
}

}  // namespace zolt
