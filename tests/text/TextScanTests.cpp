#include "text/TextScan.h"

#include <gtest/gtest.h>

#include <string>

#include "text/InstructionSets.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

bool isPlain(unsigned char c) {
  return (c >= 0x20 && c <= 0x7F) || c == '\t' || c == '\n';
}
bool isNoControl(unsigned char c) {
  return c >= 0x20;
}
bool isPrintable(unsigned char c) {
  return c >= 0x20 && c < 0x7F;
}
bool isNonAscii(unsigned char c) {
  return c >= 0x80;
}

struct Scan {
  const char* name;
  std::size_t (*prefix)(std::string_view);
  bool (*belongs)(unsigned char);
};

constexpr Scan kScans[] = {
    {"plainPrefix", plainPrefix, isPlain},
    {"controlFreePrefix", controlFreePrefix, isNoControl},
    {"printablePrefix", printablePrefix, isPrintable},
    {"nonAsciiPrefix", nonAsciiPrefix, isNonAscii},
};

std::size_t naivePrefix(std::string_view text, const Scan& scan) {
  std::size_t i = 0;
  while (i < text.size() && scan.belongs(static_cast<unsigned char>(text[i]))) {
    ++i;
  }
  return i;
}

TEST(TextScan, TellsEveryByteValueApart) {
  withEveryInstructionSet([] {
    for (const Scan& scan : kScans) {
      for (int value = 0; value < 256; ++value) {
        // Long enough for every vector, and short enough for none.
        for (const std::size_t length : {1, 15, 16, 40, 200}) {
          const std::string text(length, static_cast<char>(value));
          const bool belongs = scan.belongs(static_cast<unsigned char>(value));
          ASSERT_EQ(scan.prefix(text), belongs ? length : 0) << scan.name << ", byte " << value;
        }
      }
    }
  });
}

TEST(TextScan, StopsAtTheFirstForeignByteAtEveryPlaceLengthAndAlignment) {
  struct Bytes {
    char inside, outside;
  };
  constexpr Bytes kBytes[] = {{'a', '\x1B'}, {'\xC3', '\r'}, {'\xBF', '\x7F'}};
  withEveryInstructionSet([&] {
    for (std::size_t which = 0; which < std::size(kScans); ++which) {
      const Scan& scan = kScans[which];
      const Bytes& use = kBytes[which];
      for (std::size_t length = 0; length <= 140; ++length) {
        const std::size_t offset = length % 32;
        for (std::size_t at = 0; at <= length; ++at) {
          std::string text(offset, use.outside);
          text.append(length, use.inside);
          // Another foreign byte after the first must not be taken for it, and what follows the end counts for nothing.
          if (at < length) text[offset + at] = text[offset + length - 1] = use.outside;
          const std::string_view view = std::string_view(text).substr(offset);
          ASSERT_EQ(scan.prefix(view), naivePrefix(view, scan)) << scan.name << ' ' << length << ' ' << at;
          ASSERT_EQ(scan.prefix(view.substr(0, at)), naivePrefix(view.substr(0, at), scan)) << scan.name;
        }
      }
    }
  });
}

TEST(TextScan, AgreesWithAByteLoopOnRandomText) {
  withEveryInstructionSet([] {
    RandomText random(2);
    for (int round = 0; round < 20000; ++round) {
      const std::string text = random.text(60);
      const std::string_view view = std::string_view(text).substr(random.below(text.size() + 1));
      for (const Scan& scan : kScans) {
        ASSERT_EQ(scan.prefix(view), naivePrefix(view, scan)) << scan.name << ' ' << escaped(view);
      }
    }
  });
}

}  // namespace
}  // namespace zolt
