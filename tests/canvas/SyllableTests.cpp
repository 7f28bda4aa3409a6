#include "canvas/Syllables.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "canvas/CanvasLiterals.h"
#include "canvas/RowContent.h"

namespace zolt {
namespace {

TEST(Syllables, TakeTheVowelSignsAfterALetter) {
  for (const auto& [letter, sign] : std::vector<std::pair<const char*, const char*>>{{"ह", "ि"},
                                                                                     {"द", "ी"},
                                                                                     {"ক", "ো"},
                                                                                     {"ક", "િ"},
                                                                                     {"க", "ொ"},
                                                                                     {"ക", "ൊ"},
                                                                                     {"น", "ำ"},
                                                                                     {"ນ", "ຳ"},
                                                                                     {"က", "ာ"},
                                                                                     {"ភ", "ា"},
                                                                                     {"ꦏ", "ꦴ"}}) {
    EXPECT_TRUE(continuesSyllable(letter, sign)) << letter << sign;
  }
}

TEST(Syllables, GoOnAfterASignThatJoinsLetters) {
  EXPECT_TRUE(continuesSyllable("न्", "द"));
  EXPECT_TRUE(continuesSyllable("न्द", "ी"));
  EXPECT_TRUE(continuesSyllable("ক্", "ষ"));
  EXPECT_TRUE(continuesSyllable("ខ្", "ម"));
  EXPECT_TRUE(continuesSyllable("ක්\u200D", "ෂ")) << "a joiner of zero width asks for it";
  EXPECT_FALSE(continuesSyllable("क्\u200C", "ष")) << "a non-joiner asks for the opposite";
  EXPECT_FALSE(continuesSyllable("க்", "க")) << "Tamil shows the sign";
  EXPECT_FALSE(continuesSyllable("क्", "१")) << "a digit";
}

TEST(Syllables, EndBeforeALetterAndAnotherScript) {
  EXPECT_FALSE(continuesSyllable("क", "म"));
  EXPECT_FALSE(continuesSyllable("कि", "म"));
  EXPECT_FALSE(continuesSyllable("ক", "ि"));
  EXPECT_FALSE(continuesSyllable("漢", "ि"));
  EXPECT_FALSE(continuesSyllable("漢", "字"));
  EXPECT_FALSE(continuesSyllable("é", "é"));
  EXPECT_FALSE(continuesSyllable("क", "\U0001F600"));
}

struct Cluster {
  const char* text;
  CellLook look{};
};

// How the pieces of a row are divided whose clusters take one column each.
std::vector<std::string> piecesOf(const std::vector<Cluster>& clusters) {
  RowContent row;
  for (const Cluster& cluster : clusters) {
    row.addCluster({.begin = row.end, .end = row.end + 1}, cluster.text, cluster.look);
    row.end = row.end + 1;
  }
  std::vector<std::string> pieces;
  CanvasColumn column;
  for (const TextPiece& piece : row.pieces) {
    EXPECT_EQ(piece.column, column) << "pieces follow one another";
    column = piece.range().end;
    pieces.emplace_back(row.textOf(piece));
  }
  EXPECT_EQ(column, row.end);
  return pieces;
}

using Pieces = std::vector<std::string>;

TEST(Syllables, AreOnePieceOfARow) {
  EXPECT_EQ(piecesOf({{"ह"}, {"ि"}, {"न्"}, {"द"}, {"ी"}, {"म"}}), (Pieces{"हि", "न्दी", "म"}));
  EXPECT_EQ(piecesOf({{"漢"}, {"字"}, {"é"}}), (Pieces{"漢", "字", "é"}));
  EXPECT_EQ(piecesOf({{"ि"}, {"ि"}}), (Pieces{"ि"
                                              "ि"}))
      << "also without a letter";
}

TEST(Syllables, AreDividedWhereTheLookChanges) {
  const CellLook bold{.weight = FontWeight::Bold};
  EXPECT_EQ(piecesOf({{"क", bold}, {"ि"}, {"क", bold}, {"ि", bold}}), (Pieces{"क", "ि", "कि"}));
}

TEST(Syllables, AreDividedByAGap) {
  RowContent row;
  row.addCluster({.begin = 0_col, .end = 1_col}, "क", {});
  row.addCluster({.begin = 2_col, .end = 3_col}, "ि", {});
  EXPECT_EQ(row.pieces.size(), 2U);
  row.addText(3_col, "k", {});
  row.addCluster({.begin = 4_col, .end = 5_col}, "ि", {});
  EXPECT_EQ(row.pieces.size(), 4U) << "ASCII is a piece of its own";
}

TEST(Syllables, HaveALargestSize) {
  const std::vector<Cluster> endless(20, Cluster{"क्"});
  for (const std::string& piece : piecesOf(endless)) {
    EXPECT_LE(piece.size(), kSyllableColumns * std::string("क्").size());
  }
}

}  // namespace
}  // namespace zolt
