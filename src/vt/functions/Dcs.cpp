#include "vt/functions/Dcs.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string>

#include "vt/cells/Sgr.h"

namespace zolt::vt {

namespace {

using State = TerminalState;

// What DECRQSS can query: the request is the intermediates and final of the function that sets it.
struct Setting {
  std::string_view request;
  std::string (*parameters)(const State&);
};

std::string rendition(const State& state) {
  return renditionParameters(state.screen.pen().style);
}

std::string range(int begin, int end) {
  return std::to_string(begin + 1) + ';' + std::to_string(end);
}

std::string verticalMargins(const State& state) {
  return range(state.screen.margins().rows.begin, state.screen.margins().rows.end);
}

std::string horizontalMargins(const State& state) {
  return range(state.screen.margins().columns.begin, state.screen.margins().columns.end);
}

std::string rows(const State& state) {
  return std::to_string(state.screen.rows());
}

std::string columns(const State& state) {
  return std::to_string(state.screen.columns());
}

std::string cursorStyle(const State& state) {
  const CursorStyle shown = state.shownCursor();
  return std::to_string(1 + 2 * static_cast<int>(shown.shape) + (shown.blinks ? 0 : 1));
}

std::string protection(const State& state) {
  return state.screen.pen().isProtected && state.screen.protection == Protection::Dec ? "1" : "0";
}

std::string conformance(const State& state) {
  return std::to_string(state.conformanceLevel) + ";1";
}

std::string rectangleExtent(const State& state) {
  return state.rectanglesAreStreams ? "1" : "2";
}

// clang-format off
constexpr Setting kSettings[] = {
    {"m",   rendition},          // SGR
    {"r",   verticalMargins},    // DECSTBM
    {"s",   horizontalMargins},  // DECSLRM
    {"t",   rows},               // DECSLPP
    {" q",  cursorStyle},        // DECSCUSR
    {"\"q", protection},         // DECSCA
    {"\"p", conformance},        // DECSCL
    {"$|",  columns},            // DECSCPP
    {"*|",  rows},               // DECSNLS
    {"*x",  rectangleExtent},    // DECSACE
};
// clang-format on

void requestSetting(State& state, std::string_view text) {
  const auto* const setting = std::ranges::find(kSettings, text, &Setting::request);
  if (setting == std::end(kSettings)) return state.reply("\033P0$r\033\\");
  std::string answer = "\033P1$r";
  answer += setting->parameters(state);
  answer += setting->request;
  answer += "\033\\";
  state.reply(answer);
}

// What XTGETTCAP can query: terminfo and termcap names.
struct Capability {
  std::string_view name;
  std::string_view value;
};

// clang-format off
constexpr Capability kCapabilities[] = {
    {"TN",      "xterm-256color"},
    {"name",    "xterm-256color"},
    {"Co",      "256"},
    {"colors",  "256"},
    {"RGB",     "8"},
    {"Tc",      ""},
    {"Su",      ""},
    {"Smulx",   "\\E[4:%p1%dm"},
    {"setrgbf", "\\E[38:2::%p1%d:%p2%d:%p3%dm"},
    {"setrgbb", "\\E[48:2::%p1%d:%p2%d:%p3%dm"},
    {"Ss",      "\\E[%p1%d q"},
    {"Se",      "\\E[0 q"},
    {"Sync",    "\\E[?2026%?%p1%{1}%-%tl%eh%;"},
    {"Ms",      "\\E]52;%p1%s;%p2%s\\E\\\\"},
    {"BE",      "\\E[?2004h"},
    {"BD",      "\\E[?2004l"},
    {"XM",      "\\E[?1006;1000%?%p1%{1}%=%th%el%;"},
};
// clang-format on

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

// Names in hexadecimal, separated by semicolons; the reply stops at the first unknown one. It repeats our spelling of
// each name, never the program's.
void requestCapabilities(State& state, std::string_view text) {
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

// clang-format off
constexpr DcsFunction kFunctions[] = {
    {"$", 'q', requestSetting,      {"DCS $ q Pt ST", "DECRQSS",   "VT320", "Queries a setting: m, r, s, t, SP q, \" q, \" p, $ |, * |, * x."}},
    {"+", 'q', requestCapabilities, {"DCS + q Pt ST", "XTGETTCAP", "xterm", "Queries capabilities by their names in hexadecimal."}},
};
// clang-format on

}  // namespace

std::span<const DcsFunction> dcsFunctions() {
  return kFunctions;
}

void runDcs(TerminalState& state, const ControlSequence& head, std::string_view text) {
  const auto* const found = std::ranges::find_if(kFunctions, [&](const DcsFunction& each) {
    return each.final == head.final && each.intermediates == head.intermediateText() && head.prefix == 0;
  });
  if (found != std::end(kFunctions)) found->run(state, text);
}

}  // namespace zolt::vt
