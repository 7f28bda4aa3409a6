#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "vt/RandomOutput.h"
#include "vt/SavedCheck.h"
#include "vt/SequenceCase.h"
#include "vt/Terminal.h"

namespace zolt::vt {
namespace {

using test::continuationError;
using test::useError;
namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The control functions that random output lacks: those whose effect is seen only later.
std::string rareOutput(std::mt19937& random) {
  using namespace std::string_view_literals;
  constexpr std::string_view kPieces[] = {"\033[#{",
                                          "\033[#}",
                                          "\033[#P",
                                          "\033[#Q",
                                          "\033[22t",
                                          "\033[23t",
                                          "\033]0;one\a",
                                          "\033]1;two\a",
                                          "\033]4;9;#123456\a",
                                          "\033]11;rgb:1/2/3\a",
                                          "\033]104\a",
                                          "\033]7;file://host/some/path\a",
                                          "\033]9;4;1;30\a",
                                          "\033[>4;2m",
                                          "\033[>1;0m",
                                          "\033[>4;1f",
                                          "\033[=5u",
                                          "\033[<u",
                                          "\033[?7;25;1000s",
                                          "\033[?7;25;1000r",
                                          "\033[?1003;1006h",
                                          "\033[?2004h",
                                          "\033[61\"p",
                                          "\033[2*x",
                                          "\033H",
                                          "\033[g",
                                          "\033[3g",
                                          "\033N",
                                          "\033O",
                                          "\033*A",
                                          "\033V",
                                          "\033W",
                                          "\033#8",
                                          "\033[?2026h",
                                          "\033[?2026l",
                                          "\033Pdropped",
                                          "\033]52;c;YWJj",
                                          "\033[38;2;1;",
                                          "\033[1;2;3:4 ",
                                          "\033X",
                                          "\033P1$r\033",
                                          "\033",
                                          "\xE2\x94",
                                          "\xC2"sv,
                                          "\a"};
  return std::string(kPieces[random() % std::size(kPieces)]);
}

std::string output(std::mt19937& random, int pieces) {
  std::string text;
  for (; pieces > 0; pieces -= 4) {
    text += test::randomOutput(random, 3);
    text += random() % 8 == 0 ? test::randomLines(random, 20) : rareOutput(random);
  }
  return text;
}

TerminalSettings anySettings(std::mt19937& random) {
  TerminalSettings settings = test::readableSettings();
  settings.graphemeClusters = random() % 2 == 0;
  settings.bulkBytes = random() % 2 == 0 ? 1 : 4096;
  settings.allowWindowRequests = true;
  return settings;
}

TEST(SavedTerminal, GoesOnAsIfNothingHadHappenedWhereverItsInputIsSplit) {
  std::mt19937 random(11);
  for (int round = 0; round < 1500; ++round) {
    const auto side = [&](unsigned most) { return 1 + static_cast<int>(random() % most); };
    Terminal terminal({.rows = side(12), .columns = side(40), .pixelWidth = side(999), .pixelHeight = side(999)},
                      anySettings(random));
    for (int resizes = static_cast<int>(random() % 4); resizes > 0; --resizes) {
      terminal.feed(output(random, 30));
      terminal.resize({.rows = side(12), .columns = side(40)});
    }
    const std::string text = output(random, 40);
    const std::size_t split = random() % (text.size() + 1);
    terminal.feed(std::string_view(text).substr(0, split));
    ASSERT_EQ(continuationError(terminal, std::string_view(text).substr(split)), "")
        << "round " << round << ", split at " << split;
  }
}

TEST(SavedTerminal, GoesOnAtAnyByteOfEveryControlFunction) {
  for (const test::SequenceCase* const each : test::allCases()) {
    const TerminalSettings settings = each->allowsReading ? test::readableSettings() : TerminalSettings();
    const std::size_t step = 1 + each->input.size() / 64;
    for (std::size_t split = 0; split <= each->input.size(); split += step) {
      Terminal terminal({.rows = each->rows, .columns = each->columns}, settings);
      terminal.feed(each->input.substr(0, split));
      ASSERT_EQ(continuationError(terminal, each->input.substr(split)), "")
          << each->covers << ": " << each->says << ", split at " << split;
    }
  }
}

TEST(SavedTerminal, GoesOnInTheMiddleOfRealPrograms) {
  std::mt19937 random(12);
  int seen = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(ZOLT_SOURCE_DIR) / "tests/recordings")) {
    if (!entry.is_directory()) continue;
    ++seen;
    int rows = 0;
    int columns = 0;
    std::ifstream(entry.path() / "size") >> rows >> columns;
    const std::string input = contentOf(entry.path() / "input.bin");
    Terminal terminal({.rows = rows, .columns = columns});
    std::string_view rest = input;
    while (!rest.empty()) {
      const std::size_t size = std::min<std::size_t>(rest.size(), 1 + random() % (input.size() / 4 + 1));
      ASSERT_EQ(continuationError(terminal, rest.substr(0, size)), "") << entry.path();
      rest.remove_prefix(size);
    }
  }
  EXPECT_GE(seen, 30);
}

TEST(SavedTerminal, GoesOnAfterWhatFuzzingHasFound) {
  std::mt19937 random(13);
  int seen = 0;
  for (const std::string_view folder : {"fuzz_vt_terminal", "fuzz_vt_osc"}) {
    for (const auto& entry : fs::directory_iterator(fs::path(ZOLT_SOURCE_DIR) / "fuzz/corpus" / folder)) {
      ++seen;
      const std::string input = contentOf(entry.path());
      Terminal terminal({.rows = 8, .columns = 20}, anySettings(random));
      const std::size_t split = random() % (input.size() + 1);
      terminal.feed(std::string_view(input).substr(0, split));
      ASSERT_EQ(continuationError(terminal, std::string_view(input).substr(split)), "")
          << entry.path() << ", split at " << split;
    }
  }
  EXPECT_GE(seen, 100);
}

// A terminal that has something in every field, and whose input ends in the middle of a string.
std::string savedWithEverything(std::mt19937& random) {
  Terminal terminal({.rows = 9, .columns = 31, .pixelWidth = 310, .pixelHeight = 180}, anySettings(random));
  terminal.feed(output(random, 200));
  terminal.resize({.rows = 5, .columns = 17});
  terminal.feed("\033[?1049h" + output(random, 40) + "\033]2;half a ti");
  return terminal.saved();
}

TEST(SavedTerminal, IsAnErrorWhenItEndsEarly) {
  std::mt19937 random(14);
  for (int round = 0; round < 12; ++round) {
    const std::string bytes = savedWithEverything(random);
    ASSERT_TRUE(Terminal::restored(bytes, {}));
    for (std::size_t size = 0; size < bytes.size(); ++size) {
      const auto restored = Terminal::restored(std::string_view(bytes).substr(0, size), {});
      ASSERT_FALSE(restored) << size << " of " << bytes.size();
      ASSERT_NE(restored.reason(), "");
    }
    EXPECT_FALSE(Terminal::restored(bytes + '\0', {}));
  }
}

TEST(SavedTerminal, IsAnErrorOrATerminalWhateverItsBytes) {
  std::mt19937 random(15);
  int errors = 0;
  int terminals = 0;
  std::string saved;
  for (int round = 0; round < 8000; ++round) {
    if (round % 50 == 0) saved = savedWithEverything(random);
    std::string bytes = saved;
    for (unsigned changes = 1 + random() % 3; changes > 0; --changes) {
      const std::size_t at = random() % bytes.size();
      const unsigned kind = random() % 5;
      if (kind < 3)
        bytes[at] = static_cast<char>(kind == 0 ? random() : static_cast<unsigned>(bytes[at]) ^ 1U << random() % 8);
      if (kind == 3) bytes.erase(at, 1 + random() % 4);
      if (kind == 4) bytes.insert(at, 1 + random() % 4, static_cast<char>(random()));
    }
    auto restored = Terminal::restored(bytes, anySettings(random));
    if (restored) {
      ++terminals;
      ASSERT_EQ(useError(*restored.value()), "") << "round " << round;
    } else {
      ++errors;
      ASSERT_NE(restored.reason(), "");
    }
  }
  EXPECT_GT(errors, 300);
  EXPECT_GT(terminals, 300);
}

}  // namespace
}  // namespace zolt::vt
