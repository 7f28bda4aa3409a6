#include "session/Shell.h"

#include <nlohmann/json.hpp>

namespace zolt {

namespace {

Shell entry(const char* name, const char* executable, const char* icon) {
  return Shell{.name = name, .executable = executable, .args = {}, .icon = icon};
}

QString standardForm(const QUuid& id) {
  return id.toString(QUuid::WithoutBraces).toUpper();
}

}  // namespace

const Shell& Shell::bash() {
  static const Shell shell = entry("Bash", "/bin/bash", "chevron.left.forwardslash.chevron.right");
  return shell;
}

const Shell& Shell::zsh() {
  static const Shell shell = entry("Zsh", "/bin/zsh", "z.circle");
  return shell;
}

const Shell& Shell::fish() {
  static const Shell shell = entry("Fish", "/opt/homebrew/bin/fish", "fish");
  return shell;
}

const Shell& Shell::sh() {
  static const Shell shell = entry("Sh", "/bin/sh", "terminal");
  return shell;
}

std::string Shell::encoded() const {
  nlohmann::ordered_json object;
  object["id"] = standardForm(id).toStdString();
  object["name"] = name;
  object["executable"] = executable;
  object["args"] = args;
  object["icon"] = icon;
  // Paths are bytes: whatever is not valid UTF-8 is replaced, not refused.
  return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

Result<Shell> Shell::decode(std::string_view json) {
  try {
    const auto object = nlohmann::json::parse(json);
    const auto idText = object.at("id").get<std::string>();
    const QUuid id = QUuid::fromString(QString::fromStdString(idText));
    // The null UUID is valid, but is also what malformed text parses to. Only the form without braces is accepted.
    if (standardForm(id) != QString::fromStdString(idText).toUpper()) return Failure{"\"id\" is not a UUID: " + idText};
    return Shell{.id = id,
                 .name = object.at("name").get<std::string>(),
                 .executable = object.at("executable").get<std::string>(),
                 .args = object.at("args").get<std::vector<std::string>>(),
                 .icon = object.at("icon").get<std::string>()};
  } catch (const nlohmann::json::exception& error) {
    return Failure{error.what()};
  }
}

}  // namespace zolt
