#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "vt/SequenceDocument.h"

namespace zolt::vt::test {
namespace {

TEST(VtSequenceDocument, MatchesTheTablesAndTheCases) {
  std::ifstream file(ZOLT_SOURCE_DIR "/docs/escape-sequences.md", std::ios::binary);
  const std::string committed{std::istreambuf_iterator<char>(file), {}};
  EXPECT_TRUE(committed == sequenceDocument())
      << "The tables of control functions or their cases have changed: regenerate docs/escape-sequences.md with "
         "scripts/document-sequences, review the difference and commit it.";
}

TEST(VtSequenceDocument, ListsATestForEveryRow) {
  const std::string text = sequenceDocument();
  for (std::size_t at = text.find(kUntested); at != std::string::npos; at = text.find(kUntested, at + 1)) {
    const std::size_t begin = text.rfind('\n', at) + 1;
    ADD_FAILURE() << "No case covers " << text.substr(begin, at - begin);
  }
}

}  // namespace
}  // namespace zolt::vt::test
