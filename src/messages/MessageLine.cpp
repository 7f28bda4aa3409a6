#include "messages/MessageLine.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "messages/MessageFields.h"

namespace zolt {

namespace {

constexpr std::string_view kHelpEnd =
    "\n"
    "The answer is one line of JSON on standard output: {\"ok\":true,...}, or {\"ok\":false,\"error\":\"...\"} if the\n"
    "request was refused. What opens a terminal answers with its \"window\", its \"terminal\" and the \"token\" that\n"
    "send-text needs. Exit status: 0 done, 1 refused, 2 wrong usage, 3 Zolt is not running.\n";

// A command-line word made safe for a one-line message.
std::string onOneLine(std::string word) {
  std::ranges::replace_if(
      word, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
  return word;
}

using Texts = std::vector<std::string>;

// The arguments that are still to be read.
class Words {
 public:
  explicit Words(const Texts& words) : m_next(words.begin()), m_end(words.end()) {}
  bool atEnd() const { return m_next == m_end; }
  const std::string& take() { return *m_next++; }
  Texts takeRest() { return {std::exchange(m_next, m_end), m_end}; }

 private:
  Texts::const_iterator m_next;
  Texts::const_iterator m_end;
};

Result<void> takeOption(Message& message, std::string name, Words& words) {
  std::string value;
  const std::size_t equals = name.find('=');
  const bool isJoined = equals != std::string::npos;  // "--name value" and "--name=value" are the same
  if (isJoined) {
    value = name.substr(equals + 1);
    name.resize(equals);
  }
  const auto row = std::ranges::find_if(
      fieldRows(), [&](const FieldRow& each) { return each.option != nullptr && name == each.option; });
  if (row == fieldRows().end()) return Failure{"unknown option: " + onOneLine(name)};
  if (!row->verbs.contains(message.verb)) return Failure{std::string(rowOf(message.verb).name) + " takes no " + name};
  if (!isJoined && !words.atEnd()) value = words.take();
  if (value.empty()) return Failure{name + " needs a value: " + row->value};
  message.*std::get<std::string Message::*>(row->member) = value;
  return {};
}

// An argument that is no option: a split's side, or a text.
Result<void> takeArgument(MessageLine& line, const std::string& word) {
  Message& message = line.message;
  if (message.verb == Verb::Split && message.side.empty()) {
    message.side = word;
    return {};
  }
  if (message.verb == Verb::SendText && message.text.empty() && !line.readsText) {
    line.readsText = word == "-";
    if (!line.readsText) message.text = word;
    return {};
  }
  return Failure{"unexpected argument: " + onOneLine(word)};
}

bool takesProgram(Verb verb) {
  return std::ranges::any_of(fieldRows(), [verb](const FieldRow& row) {
    return row.member == FieldRow::Member(&Message::program) && row.verbs.contains(verb);
  });
}

// What follows "--": a program with its arguments, or a text that begins with a dash.
Result<void> takeRest(MessageLine& line, Words& words) {
  Texts rest = words.takeRest();
  if (takesProgram(line.message.verb)) {
    if (rest.empty() || rest.front().empty()) return Failure{"-- needs a program"};
    line.message.program = std::move(rest);
    return {};
  }
  for (const std::string& word : rest) {
    if (const auto taken = takeArgument(line, word); !taken) return taken;
  }
  return {};
}

std::string column(std::string head, std::size_t width) {
  head.resize(std::max(head.size() + 2, width), ' ');
  return head;
}

}  // namespace

Result<MessageLine> MessageLine::parse(const std::vector<std::string>& arguments) {
  MessageLine line;
  Words words(arguments);
  if (words.atEnd()) return Failure{"a verb is missing; zolt msg --help tells them all"};
  const std::string& first = words.take();
  line.wantsHelp = first == "--help";
  if (line.wantsHelp) return line;
  const VerbRow* const verb = verbNamed(first);
  if (verb == nullptr) return Failure{"there is no verb " + onOneLine(first) + "; zolt msg --help tells them all"};
  line.message.verb = verb->verb;
  while (!words.atEnd()) {
    const std::string& word = words.take();
    if (word == "--help") {
      line.wantsHelp = true;
      return line;
    }
    const bool isOption = word.starts_with("--") && word != "--";
    const auto taken = word == "--" ? takeRest(line, words)
                       : isOption   ? takeOption(line.message, word, words)
                                    : takeArgument(line, word);
    if (!taken) return Failure{taken.reason()};
  }
  if (verb->verb == Verb::SendText && line.message.text.empty() && !line.readsText) {
    return Failure{"send-text needs a text, or - for standard input"};
  }
  return line;
}

std::string MessageLine::helpText() {
  std::string text = "Usage: zolt msg VERB [OPTION...] [ARGUMENT...]\nAsks something of the Zolt that is running.\n\n";
  for (const VerbRow& row : verbRows()) {
    std::string head("  ");
    head.append(row.name);
    if (*row.argument != '\0') head.append(" ").append(row.argument);
    text += column(head, 48) + row.help + "\n";
  }
  text += "\n";
  for (const FieldRow& row : fieldRows()) {
    if (row.option == nullptr) continue;
    text += column(std::string("  ").append(row.option).append(" ").append(row.value), 28) + row.help + "\n";
    std::string with;
    for (const VerbRow& verb : verbRows()) {
      if (row.verbs.contains(verb.verb)) with.append(with.empty() ? "" : ", ").append(verb.name);
    }
    text += std::string(28, ' ') + "(" + with + ")\n";
  }
  return text.append(kHelpEnd);
}

}  // namespace zolt
