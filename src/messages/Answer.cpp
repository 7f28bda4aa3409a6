#include "messages/Answer.h"

#include <nlohmann/json.hpp>

namespace zolt {

namespace {

using Json = nlohmann::ordered_json;

// In ASCII: titles come from programs, and the answer is read in a terminal.
std::string lineOf(const Json& answer) {
  return answer.dump(-1, ' ', true, Json::error_handler_t::replace) + "\n";
}

Json toJson(const ListedTerminal& terminal);
Json toJson(const ListedTab& tab);
Json toJson(const ListedWindow& window);

template <class T>
Json listOf(const std::vector<T>& all) {
  Json list = Json::array();
  for (const T& each : all)
    list.push_back(toJson(each));
  return list;
}

Json toJson(const ListedTerminal& terminal) {
  return {{"id", terminal.id},
          {"title", terminal.title},
          {"folder", terminal.folder},
          {"rows", terminal.rows},
          {"columns", terminal.columns},
          {"focused", terminal.isFocused},
          {"program", terminal.program ? Json(*terminal.program) : Json()}};
}

Json toJson(const ListedTab& tab) {
  return {{"title", tab.title}, {"current", tab.isCurrent}, {"terminals", listOf(tab.terminals)}};
}

Json toJson(const ListedWindow& window) {
  return {{"id", window.id},
          {"title", window.title},
          {"display", window.display},
          {"focused", window.isFocused},
          {"tabs", listOf(window.tabs)}};
}

}  // namespace

std::string answerDone() {
  return lineOf({{"ok", true}});
}

std::string answerRefused(std::string_view reason) {
  return lineOf({{"ok", false}, {"error", reason}});
}

std::string answerOpened(const OpenedTerminal& opened) {
  return lineOf({{"ok", true}, {"window", opened.window}, {"terminal", opened.terminal}, {"token", opened.token}});
}

std::string answerListed(const std::vector<ListedWindow>& windows) {
  return lineOf({{"ok", true}, {"windows", listOf(windows)}});
}

std::optional<bool> isDone(std::string_view answer) {
  const Json parsed = Json::parse(answer, nullptr, false);
  if (!parsed.is_object()) return std::nullopt;
  const auto ok = parsed.find("ok");
  return ok == parsed.end() || !ok->is_boolean() ? std::nullopt : std::optional(ok->get<bool>());
}

}  // namespace zolt
