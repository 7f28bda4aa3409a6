#include "emulation/StyledRuns.h"

#include "emulation/ANSIParser.h"
#include "text/RandomText.h"

namespace zolt {

StyledRuns runsOf(const AttributedString& string) {
  StyledRuns runs;
  std::string_view rest = string.text();
  for (const AttributedString::Run& run : string.runs()) {
    runs.push_back({.text = std::string(rest.substr(0, run.length)), .attributes = string.attributes(run)});
    rest.remove_prefix(run.length);
  }
  if (!rest.empty()) runs.push_back({.text = "not covered by runs: " + std::string(rest), .attributes = {}});
  return runs;
}

StyledRuns parsed(std::string_view chunk) {
  return runsOf(ANSIParser().parse(chunk));
}

std::string shown(std::string_view chunk) {
  return std::string(ANSIParser().parse(chunk).text());
}

TextAttributes styleAfter(std::string_view params) {
  const StyledRuns runs = parsed("\x1B[" + std::string(params) + "mx");
  return runs.at(0).attributes;
}

TextAttributes plainStyle() {
  return {.font = {.size = 14, .weight = FontWeight::Regular, .slant = FontSlant::Upright},
          .foreground = {1.0, 1.0, 1.0, 1.0},
          .background = std::nullopt,
          .underline = Line::None,
          .strikethrough = Line::None};
}

void PrintTo(const Color& color, std::ostream* out) {
  *out << color.red << '/' << color.green << '/' << color.blue << '/' << color.alpha;
}

void PrintTo(const TextAttributes& attributes, std::ostream* out) {
  *out << "{" << attributes.font.size << (attributes.font.weight == FontWeight::Bold ? " bold" : " regular")
       << (attributes.font.slant == FontSlant::Italic ? " italic" : "") << " on ";
  if (attributes.background) {
    PrintTo(*attributes.background, out);
  } else {
    *out << "nothing";
  }
  *out << " in ";
  PrintTo(attributes.foreground, out);
  *out << (attributes.underline == Line::Single ? " underline" : "")
       << (attributes.strikethrough == Line::Single ? " strikethrough" : "") << "}";
}

void PrintTo(const StyledRun& run, std::ostream* out) {
  *out << escaped(run.text) << ' ';
  PrintTo(run.attributes, out);
}

}  // namespace zolt
