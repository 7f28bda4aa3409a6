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
bool isNotControl(unsigned char c) {
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
  char inside;   // a byte that belongs
  char outside;  // one that does not
};

constexpr Scan kScans[] = {
    {"plainPrefix", plainPrefix, isPlain, 'a', '\x1B'},
    {"controlFreePrefix", controlFreePrefix, isNotControl, '\xC3', '\r'},
    {"printablePrefix", printablePrefix, isPrintable, 'a', '\x7F'},
    {"nonAsciiPrefix", nonAsciiPrefix, isNonAscii, '\xBF', 'z'},
};

std::size_t naivePrefix(std::string_view text, const Scan& scan) {
  std::size_t i = 0;
  while (i < text.size() && scan.belongs(static_cast<unsigned char>(text[i]))) {
    ++i;
  }
  return i;
}

TEST(TextScan, DistinguishesAllByteValues) {
  withEveryInstructionSet([] {
    for (const Scan& scan : kScans) {
      for (int value = 0; value < 256; ++value) {
        // From shorter than any vector to longer than all of them.
        for (const std::size_t length : {1, 15, 16, 40, 200}) {
          const std::string text(length, static_cast<char>(value));
          const bool belongs = scan.belongs(static_cast<unsigned char>(value));
          ASSERT_EQ(scan.prefix(text), belongs ? length : 0) << scan.name << ", byte " << value;
        }
      }
    }
  });
}

TEST(TextScan, StopsAtTheFirstOtherByteWhereverItIsAtEveryLengthAndAlignment) {
  withEveryInstructionSet([] {
    for (const Scan& scan : kScans) {
      for (std::size_t length = 0; length <= 140; ++length) {
        const std::size_t offset = length % 32;
        for (std::size_t at = 0; at <= length; ++at) {
          std::string text(offset, scan.outside);
          text.append(length, scan.inside);
          // A second such byte must not be mistaken for the first, and nothing past the end of the view may count.
          if (at < length) text[offset + at] = text[offset + length - 1] = scan.outside;
          const std::string_view view = std::string_view(text).substr(offset);
          ASSERT_EQ(scan.prefix(view), at) << scan.name << ' ' << length;
          ASSERT_EQ(scan.prefix(view.substr(0, at)), at) << scan.name << ' ' << length;
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
