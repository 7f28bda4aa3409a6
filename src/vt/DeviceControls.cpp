#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "vt/SgrSequence.h"
#include "vt/StringFunctions.h"

namespace zolt::vt {

namespace {

using State = TerminalState;

// What DECRQSS can ask for: the characters that end the function which sets it.
struct Setting {
  std::string_view request;
  std::string (*parameters)(const State&);
};

int cursorStyle(const State& state) {
  const int first = state.cursorShape == CursorShape::Block ? 1 : state.cursorShape == CursorShape::Underline ? 3 : 5;
  return first + (state.cursorShapeBlinks ? 0 : 1);
}

constexpr Setting kSettings[] = {
    {"m", [](const State& s) { return renditionParameters(s.screen.pen().style); }},
    {"r",
     [](const State& s) {
       return std::to_string(s.screen.margins().top + 1) + ';' + std::to_string(s.screen.margins().bottom);
     }},
    {"s",
     [](const State& s) {
       return std::to_string(s.screen.margins().left + 1) + ';' + std::to_string(s.screen.margins().right);
     }},
    {"t", [](const State& s) { return std::to_string(s.screen.rows()); }},
    {" q", [](const State& s) { return std::to_string(cursorStyle(s)); }},
    {"\"q",
     [](const State& s) {
       const bool isProtected = s.screen.pen().isProtected && s.screen.protection == Protection::Dec;
       return std::string(isProtected ? "1" : "0");
     }},
    {"\"p", [](const State& s) { return std::to_string(s.conformanceLevel) + ";1"; }},
    {"$|", [](const State& s) { return std::to_string(s.screen.columns()); }},
    {"*|", [](const State& s) { return std::to_string(s.screen.rows()); }},
    {"*x", [](const State& s) { return std::string(s.rectanglesAreStreams ? "1" : "2"); }},
};

void requestSetting(State& state, const ControlSequence&, std::string_view text) {
  const auto* const setting = std::ranges::find(kSettings, text, &Setting::request);
  if (setting == std::end(kSettings)) return state.reply("\033P0$r\033\\");
  std::string answer = "\033P1$r";
  answer += setting->parameters(state);
  answer += setting->request;
  answer += "\033\\";
  state.reply(answer);
}

// The terminal's capabilities by their names in terminfo and termcap.
struct Capability {
  std::string_view name;
  std::string_view value;
};
constexpr Capability kCapabilities[] = {
    {"TN", "xterm-256color"},
    {"name", "xterm-256color"},
    {"Co", "256"},
    {"colors", "256"},
    {"RGB", "8"},
    {"Tc", ""},
    {"Su", ""},
    {"Smulx", "\\E[4:%p1%dm"},
    {"setrgbf", "\\E[38:2::%p1%d:%p2%d:%p3%dm"},
    {"setrgbb", "\\E[48:2::%p1%d:%p2%d:%p3%dm"},
    {"Ss", "\\E[%p1%d q"},
    {"Se", "\\E[0 q"},
    {"Sync", "\\E[?2026%?%p1%{1}%-%tl%eh%;"},
    {"Ms", "\\E]52;%p1%s;%p2%s\\E\\\\"},
    {"BE", "\\E[?2004h"},
    {"BD", "\\E[?2004l"},
    {"XM", "\\E[?1006;1000%?%p1%{1}%=%th%el%;"},
};

std::string inHex(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string hex;
  for (const char c : text) {
    hex += kDigits[static_cast<unsigned char>(c) >> 4];
    hex += kDigits[static_cast<unsigned char>(c) & 0xF];
  }
  return hex;
}

bool equalsHex(std::string_view hex, std::string_view text) {
  const std::string wanted = inHex(text);
  return std::ranges::equal(hex, wanted, [](char given, char digit) {
    return (given >= 'a' && given <= 'f' ? given - 'a' + 'A' : given) == digit;
  });
}

// Names in hexadecimal between semicolons. The answer is in our own words: it stops at the first name that is not
// known.
void requestCapabilities(State& state, const ControlSequence&, std::string_view text) {
  constexpr int kMaxNames = 64;
  std::string answer;
  for (int i = 0; i < kMaxNames && !text.empty(); ++i) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const auto* const known = std::ranges::find_if(
        kCapabilities, [&](const Capability& each) { return equalsHex(text.substr(0, end), each.name); });
    if (known == std::end(kCapabilities)) break;
    answer += answer.empty() ? "" : ";";
    answer += inHex(known->name);
    if (!known->value.empty()) {
      answer += '=';
      answer += inHex(known->value);
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  state.reply(answer.empty() ? std::string("\033P0+r\033\\") : "\033P1+r" + answer + "\033\\");
}

constexpr DeviceControl kDeviceControls[] = {
    {"$",
     'q',
     requestSetting,
     {"DCS $ q Pt ST", "DECRQSS", "VT320", "Tells a setting: m, r, s, t, SP q, \" q, \" p, $ |, * |, * x."}},
    {"+",
     'q',
     requestCapabilities,
     {"DCS + q Pt ST", "XTGETTCAP", "xterm", "Tells capabilities by their names in hexadecimal."}},
};

}  // namespace

std::span<const DeviceControl> deviceControls() {
  return kDeviceControls;
}

void runDeviceControl(TerminalState& state, const ControlSequence& head, std::string_view text) {
  const auto* const found = std::ranges::find_if(kDeviceControls, [&](const DeviceControl& each) {
    return each.final == head.final && each.intermediates == head.intermediateText() && head.prefix == 0;
  });
  if (found != std::end(kDeviceControls)) found->run(state, head, text);
}

}  // namespace zolt::vt
