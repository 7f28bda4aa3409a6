// The log display's parser on valid UTF-8, whole and in chunks: every byte it shows is one it may show, and the runs
// cover the text.
//
// A palette index that is negative, or so large that its grey level overflows, stops the program by design
// (ANSIParser::parse). Inputs that could contain one are skipped: those with a minus after a semicolon (or after the
// last byte of U+037E, which is canonically equivalent to one), and those with 18 digits in a row, the length of the
// smallest index that overflows.
#include "emulation/ANSIParser.h"
#include "fuzz/FuzzInput.h"
#include "text/GraphemeClusters.h"

namespace {

constexpr int kTooManyDigits = 18;

bool mayStopTheProgram(std::string_view text) {
  int digits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    digits = text[i] >= '0' && text[i] <= '9' ? digits + 1 : 0;
    if (digits == kTooManyDigits) return true;
    if (text[i] == '-' && i > 0 && (text[i - 1] == ';' || text[i - 1] == '\xBE')) return true;
  }
  return false;
}

void check(const zolt::AttributedString& shown, std::size_t inputSize) {
  zolt::require(shown.text().size() <= inputSize, "more is shown than was fed");
  for (const char c : shown.text()) {
    const bool control = c == '\n' || c == '\r' || c == '\t';
    zolt::require(control || (c >= 0x20 && static_cast<unsigned char>(c) < 0x80), "a character that is never shown");
  }
  std::size_t covered = 0;
  for (const zolt::AttributedString::Run& run : shown.runs()) {
    zolt::require(run.length != 0, "a run that is empty");
    covered += run.length;
  }
  zolt::require(covered == shown.text().size(), "the runs do not cover the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  const std::size_t step = 1 + input.byte() % 16;
  std::string_view text = input.rest();
  if (!zolt::isValidUtf8(text) || mayStopTheProgram(text)) return 0;
  check(zolt::ANSIParser().parse(text), text.size());
  zolt::ANSIParser parser;
  while (!text.empty()) {
    const std::string_view chunk = text.substr(0, zolt::chunkEnd(text, step));
    check(parser.parse(chunk), chunk.size());
    text.remove_prefix(chunk.size());
  }
  return 0;
}
