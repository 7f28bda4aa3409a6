#include "messages/MessageFields.h"

#include <algorithm>
#include <array>

namespace zolt {

namespace {

using enum Verb;

// clang-format off
constexpr std::array<VerbRow, 6> kVerbs{{
    {NewWindow, "new-window", "[-- PROGRAM [ARG...]]", "open a window"},
    {NewTab,    "new-tab",    "[-- PROGRAM [ARG...]]", "open a tab beside the terminal's, or in the window given"},
    {Split,     "split",      "[right|down] [-- PROGRAM [ARG...]]", "split a terminal; to the right unless told otherwise"},
    {SendText,  "send-text",  "TEXT|-", "type TEXT, or with - what standard input holds, into a terminal"},
    {List,      "list",       "", "tell of all windows, tabs and terminals"},
    {Focus,     "focus",      "", "bring a terminal or window to the front"},
}};

constexpr Verbs kOpening{NewWindow, NewTab, Split};

constexpr std::array<FieldRow, 9> kFields{{
    {"side",             &Message::side,             {Split},                           nullptr, nullptr, nullptr},
    {"workingDirectory", &Message::workingDirectory, kOpening,                          "--working-directory", "DIR", "start in DIR; otherwise in the current directory"},
    {"title",            &Message::title,            {NewWindow, NewTab},               "--title", "TITLE", "name the tab"},
    {"terminal",         &Message::terminal,         {NewTab, Split, SendText, Focus},  "--terminal", "ID", "the terminal; otherwise the one that zolt msg runs in"},
    {"window",           &Message::window,           {NewTab, Split, Focus},            "--window", "ID", "the window, and the terminal that is current in it"},
    {"token",            &Message::token,            {SendText},                        "--token", "TOKEN", "what the terminal's opening answered; otherwise ZOLT_TOKEN"},
    {"program",          &Message::program,          kOpening,                          nullptr, nullptr, nullptr},
    {"text",             &Message::text,             {SendText},                        nullptr, nullptr, nullptr},
    {"activationToken",  &Message::activationToken,  {NewWindow, Focus},                nullptr, nullptr, nullptr},
}};
// clang-format on

}  // namespace

std::span<const VerbRow> verbRows() {
  return kVerbs;
}

const VerbRow* verbNamed(std::string_view name) {
  const auto* found = std::ranges::find(kVerbs, name, [](const VerbRow& row) { return std::string_view(row.name); });
  return found == kVerbs.end() ? nullptr : found;
}

const VerbRow& rowOf(Verb verb) {
  return *std::ranges::find(kVerbs, verb, &VerbRow::verb);
}

std::span<const FieldRow> fieldRows() {
  return kFields;
}

}  // namespace zolt
