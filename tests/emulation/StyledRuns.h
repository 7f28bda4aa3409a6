#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "text/AttributedString.h"

namespace zolt {

/// One run of a styled text, by value: what tests compare and print.
struct StyledRun {
  std::string text;
  TextAttributes attributes;

  friend bool operator==(const StyledRun&, const StyledRun&) = default;
};

using StyledRuns = std::vector<StyledRun>;

StyledRuns runsOf(const AttributedString& string);

/// The runs that a fresh parser makes of one chunk, and their text alone.
StyledRuns parsed(std::string_view chunk);
std::string shown(std::string_view chunk);

/// The style that "ESC [ `params` m" leaves behind, beginning with the initial rendition.
TextAttributes styleAfter(std::string_view params);

/// The style of text before any sequence: regular 14 point, white, without a background.
TextAttributes plainStyle();

void PrintTo(const Color& color, std::ostream* out);
void PrintTo(const TextAttributes& attributes, std::ostream* out);
void PrintTo(const StyledRun& run, std::ostream* out);

}  // namespace zolt
