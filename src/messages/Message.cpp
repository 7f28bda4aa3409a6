#include "messages/Message.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "messages/MessageFields.h"
#include "text/GraphemeClusters.h"

namespace zolt {

namespace {

using Json = nlohmann::ordered_json;
using Texts = std::vector<std::string>;

constexpr const char* kVersionKey = "zolt";
constexpr const char* kVerbKey = "verb";

// Words of a message in a sentence that quotes them: short, and on one line.
std::string inQuotes(std::string_view word) {
  constexpr std::size_t kLongest = 60;
  std::string shown(word.substr(0, kLongest));
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, '?');
  return "\"" + shown + (word.size() > kLongest ? "...\"" : "\"");
}

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::ranges::find(words, word) != words.end();
}

// No program, path or title can hold it.
bool hasNul(std::string_view text) {
  return text.find('\0') != std::string_view::npos;
}

bool isGiven(const Message& message, const FieldRow& row) {
  return std::visit([&](auto member) { return !(message.*member).empty(); }, row.member);
}

bool take(const Json& value, std::string& field) {
  if (!value.is_string()) return false;
  field = value.get<std::string>();
  return true;
}

bool take(const Json& value, Texts& field) {
  if (!value.is_array() || !std::ranges::all_of(value, &Json::is_string)) return false;
  field = value.get<Texts>();
  return true;
}

std::string atVerb(Verb verb, std::string_view what) {
  return std::string(rowOf(verb).name).append(" ").append(what);
}

// What is not said by the tables.
Result<void> checkedFields(const Message& message) {
  if (!message.side.empty() && !isOneOf(message.side, {"right", "down"})) {
    return Failure{"a split is made to the right or down, not " + inQuotes(message.side)};
  }
  if (!message.workingDirectory.empty() && !message.workingDirectory.starts_with('/')) {
    return Failure{"the working directory must be an absolute path, not " + inQuotes(message.workingDirectory)};
  }
  if (!message.program.empty() && message.program.front().empty()) return Failure{"the program has no name"};
  if (!message.terminal.empty() && !message.window.empty()) {
    return Failure{"a terminal and a window cannot both be given"};
  }
  if (message.verb == Verb::SendText && message.terminal.empty()) {
    return Failure{atVerb(message.verb, "needs the ID of a terminal")};
  }
  return {};
}

Result<void> checkedTexts(const Message& message) {
  const auto check = [](std::string_view key, std::string_view text) -> Result<void> {
    if (!isValidUtf8(text)) return Failure{std::string(key) + " is not valid UTF-8"};
    if (key != "text" && hasNul(text)) return Failure{std::string(key) + " holds a NUL character"};
    return {};
  };
  for (const FieldRow& row : fieldRows()) {
    Texts texts;
    if (const auto* one = std::get_if<std::string Message::*>(&row.member)) {
      texts = {message.**one};
    } else {
      texts = message.*std::get<Texts Message::*>(row.member);
    }
    for (const std::string& text : texts) {
      if (const auto fine = check(row.key, text); !fine) return fine;
    }
  }
  return {};
}

Result<void> checkedVersion(const Json& request) {
  const auto version = request.find(kVersionKey);
  const bool isNumber = version != request.end() && version->is_number_unsigned();
  const std::uint64_t number = isNumber ? version->get<std::uint64_t>() : 0;
  if (number < 1) return Failure{"the request does not say which version of the messages it is of"};
  if (number > kMessageVersion) {
    return Failure{"this Zolt understands version " + std::to_string(kMessageVersion) +
                   " of the messages, and the request is of a newer one"};
  }
  return {};
}

}  // namespace

Result<void> checked(const Message& message) {
  if (const auto fine = checkedTexts(message); !fine) return fine;
  for (const FieldRow& row : fieldRows()) {
    if (isGiven(message, row) && !row.verbs.contains(message.verb)) {
      return Failure{atVerb(message.verb, "takes no ") + row.key};
    }
  }
  return checkedFields(message);
}

std::string Message::encoded() const {
  Json request{{kVersionKey, kMessageVersion}, {kVerbKey, rowOf(verb).name}};
  for (const FieldRow& row : fieldRows()) {
    if (isGiven(*this, row)) std::visit([&](auto member) { request[row.key] = this->*member; }, row.member);
  }
  return request.dump(-1, ' ', true, Json::error_handler_t::replace) + "\n";
}

Result<Message> Message::decoded(std::string_view line) {
  if (line.size() > kRequestLimitBytes) return Failure{"the request is larger than 1 MiB"};
  const Json request = Json::parse(line, nullptr, false);
  if (!request.is_object()) return Failure{"the request is not a JSON object"};
  if (const auto fine = checkedVersion(request); !fine) return Failure{fine.reason()};
  const auto verb = request.find(kVerbKey);
  const bool isNamed = verb != request.end() && verb->is_string();
  const VerbRow* const row = isNamed ? verbNamed(verb->get_ref<const std::string&>()) : nullptr;
  if (row == nullptr) {
    return Failure{isNamed ? "there is no verb " + inQuotes(verb->get_ref<const std::string&>())
                           : "the request has no verb"};
  }
  Message message{.verb = row->verb};
  for (const auto& [key, value] : request.items()) {
    if (isOneOf(key, {kVersionKey, kVerbKey})) continue;
    const auto field = std::ranges::find(fieldRows(), key, [](const FieldRow& each) { return std::string(each.key); });
    if (field == fieldRows().end() || !field->verbs.contains(message.verb)) {
      return Failure{atVerb(message.verb, "takes no ") + inQuotes(key)};
    }
    const auto takeField = [&, &content = value](auto member) { return take(content, message.*member); };
    if (!std::visit(takeField, field->member)) return Failure{inQuotes(key) + " is of the wrong type"};
  }
  if (const auto fine = checked(message); !fine) return Failure{fine.reason()};
  return message;
}

std::string asTyped(std::string_view text) {
  std::string typed;
  typed.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    typed += text[i] == '\n' ? '\r' : text[i];
  }
  return typed;
}

}  // namespace zolt
