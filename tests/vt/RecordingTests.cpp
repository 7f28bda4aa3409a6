#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "vt/RecordingPicture.h"
#include "vt/TerminalPicture.h"

namespace zolt::vt {
namespace {

namespace fs = std::filesystem;

struct Recording {
  std::string name;
  int rows = 0;
  int columns = 0;
  std::string input;
  std::string expected;
};

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<Recording> recordings() {
  std::vector<Recording> all;
  for (const auto& entry : fs::directory_iterator(fs::path(ZOLT_SOURCE_DIR) / "tests/recordings")) {
    if (!entry.is_directory()) continue;
    Recording recording;
    recording.name = entry.path().filename().string();
    std::ifstream(entry.path() / "size") >> recording.rows >> recording.columns;
    recording.input = contentOf(entry.path() / "input.bin");
    recording.expected = contentOf(entry.path() / "expected.screen");
    all.push_back(std::move(recording));
  }
  return all;
}

TEST(Recordings, ShowTheApprovedScreens) {
  const auto all = recordings();
  ASSERT_GE(all.size(), 30U);
  for (const Recording& recording : all) {
    Terminal terminal({.rows = recording.rows, .columns = recording.columns});
    terminal.feed(recording.input);
    EXPECT_EQ(test::recordingPicture(terminal), recording.expected)
        << recording.name << ": if this is right, scripts/approve-recordings " << recording.name;
    EXPECT_EQ(test::brokenRule(terminal.screen()), "") << recording.name;
  }
}

TEST(Recordings, ShowTheSameHoweverTheyAreSplit) {
  std::mt19937 random(7);
  for (const Recording& recording : recordings()) {
    Terminal whole({.rows = recording.rows, .columns = recording.columns});
    whole.feed(recording.input);
    for (const std::size_t maxPiece : {std::size_t{1}, std::size_t{13}, std::size_t{999}}) {
      Terminal split({.rows = recording.rows, .columns = recording.columns});
      std::string_view rest = recording.input;
      while (!rest.empty()) {
        const std::size_t size = std::min<std::size_t>(rest.size(), 1 + random() % maxPiece);
        split.feed(rest.substr(0, size));
        rest.remove_prefix(size);
      }
      EXPECT_EQ(test::everythingOf(split), test::everythingOf(whole))
          << recording.name << " in pieces of up to " << maxPiece;
    }
  }
}

TEST(Recordings, KeepTheirTextWhenResized) {
  for (const Recording& recording : recordings()) {
    Terminal terminal({.rows = recording.rows, .columns = recording.columns});
    terminal.feed(recording.input);
    if (terminal.screen().showsAlternate()) continue;
    const std::string before = test::linesOf(terminal.screen());
    for (const int columns : {recording.columns + 37, recording.columns - 3, 5, recording.columns}) {
      terminal.resize({.rows = recording.rows, .columns = columns});
      EXPECT_EQ(test::linesOf(terminal.screen()), before) << recording.name << " at " << columns;
    }
  }
}

}  // namespace
}  // namespace zolt::vt
