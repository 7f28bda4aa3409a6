// A log that is written to a file and printed again.
#include <gtest/gtest.h>

#include "emulation/ANSIParser.h"
#include "emulation/SGREncoder.h"
#include "emulation/StyledRuns.h"
#include "history/OutputWriter.h"
#include "history/TextStorage.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

std::string saved(const TextStorage& storage) {
  const TextSnapshot text = storage.snapshot(0, storage.blockCount());
  OutputWriter writer(appendSGR);
  std::string out;
  for (std::size_t i = 0; i < text.endBlock(); ++i) {
    writer.append(text, i, out);
  }
  writer.finish(out);
  return out;
}

// Runs of equal style as one, each line end as a LF in the style of its first byte.
class Runs {
 public:
  void add(std::string_view text, const TextAttributes& attributes) {
    for (const char c : text) {
      const bool restOfPair = c == '\n' && m_before == '\r';
      m_before = c;
      if (restOfPair) continue;
      if (m_runs.empty() || m_runs.back().attributes != attributes) m_runs.push_back({"", attributes});
      m_runs.back().text += c == '\r' ? '\n' : c;
    }
  }
  const StyledRuns& runs() const { return m_runs; }

 private:
  StyledRuns m_runs;
  char m_before = 0;
};

StyledRuns runsOf(const TextStorage& storage) {
  Runs runs;
  storage.forEachRun({}, storage.end(),
                     [&](TextPosition, std::string_view text, const TextAttributes& style) { runs.add(text, style); });
  return runs.runs();
}

StyledRuns printed(const std::string& file) {
  Runs runs;
  for (const StyledRun& run : parsed(file)) {
    runs.add(run.text, run.attributes);
  }
  return runs.runs();
}

void printAndSave(std::uint64_t seed, int rounds, std::size_t pieces) {
  RandomText random(seed, renditionAlphabet);
  for (int round = 0; round < rounds; ++round) {
    const std::string text = random.text(pieces);
    TextStorage storage;
    ANSIParser parser;
    for (const std::string_view chunk : random.chunks(text)) {
      storage.append(parser.parse(chunk));
    }
    ASSERT_TRUE(printed(saved(storage)) == runsOf(storage)) << escaped(text).substr(0, 2000);
  }
}

TEST(SavedOutput, HasTheSameStylesWhenItIsPrinted) {
  printAndSave(50, 5000, 60);
}

TEST(SavedOutput, HasTheSameStylesWhenManyBlocksArePrinted) {
  printAndSave(51, 20, 200000);
}

TEST(SavedOutput, LeavesTheTerminalAsItWas) {
  RandomText random(52, renditionAlphabet);
  for (int round = 0; round < 500; ++round) {
    TextStorage storage;
    ANSIParser printing;
    storage.append(printing.parse(random.text(20)));
    ANSIParser reading;
    static_cast<void>(reading.parse(saved(storage)));
    const StyledRuns after = zolt::runsOf(reading.parse("x"));
    ASSERT_EQ(after.at(0).attributes, plainStyle());
  }
}

TEST(SavedOutput, IsAboutAsLargeAsWhatWasPrinted) {
  std::string text;
  for (int i = 0; i < 10000; ++i) {
    text += "\x1B[32mgreen\x1B[0m and \x1B[1;31mbold\x1B[0m\n";
  }
  TextStorage storage;
  storage.append(ANSIParser().parse(text));
  EXPECT_TRUE(saved(storage) == text) << saved(storage).size() << " bytes instead of " << text.size();
}

}  // namespace
}  // namespace zolt
