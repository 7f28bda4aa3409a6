// Runs the test file that comes with UAX #29.
#include "text/GraphemeBreakFile.h"

#include <gtest/gtest.h>

#include "text/GraphemeClusters.h"
#include "text/Utf8.h"

namespace zolt {
namespace {

TEST(GraphemeBreakFile, BreaksTextWhereUnicodeSays) {
  const auto lines = test::graphemeBreakFile();
  if (lines.empty()) GTEST_SKIP() << "the package unicode-data is not installed";
  ASSERT_GT(lines.size(), 500U);
  for (const test::GraphemeBreakLine& line : lines) {
    std::string text;
    std::vector<std::size_t> ends;
    for (const std::u32string& cluster : line.clusters) {
      for (const char32_t scalar : cluster) {
        appendUtf8(text, scalar);
      }
      ends.push_back(text.size());
    }
    std::vector<std::size_t> found;
    for (std::size_t at = 0; at < text.size();) {
      at = clusterEnd(text, at);
      found.push_back(at);
    }
    EXPECT_EQ(found, ends) << "line " << line.number;
  }
}

TEST(GraphemeBreakFile, ContinuesAClusterScalarByScalarAsUnicodeSays) {
  const auto lines = test::graphemeBreakFile();
  if (lines.empty()) GTEST_SKIP() << "the package unicode-data is not installed";
  for (const test::GraphemeBreakLine& line : lines) {
    for (std::size_t i = 0; i < line.clusters.size(); ++i) {
      const std::u32string& cluster = line.clusters[i];
      for (std::size_t size = 1; size < cluster.size(); ++size) {
        EXPECT_TRUE(continuesCluster(cluster.substr(0, size), cluster[size])) << "line " << line.number;
      }
      if (i + 1 < line.clusters.size()) {
        EXPECT_FALSE(continuesCluster(cluster, line.clusters[i + 1].front())) << "line " << line.number;
      }
    }
  }
}

}  // namespace
}  // namespace zolt
