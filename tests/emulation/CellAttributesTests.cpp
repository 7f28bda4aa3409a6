#include "emulation/CellAttributes.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace zolt {
namespace {

CellAttributes raw(std::int64_t value) {
  return CellAttributes(value);
}

// Values whose bits overlap in every way, the sign bit included.
std::vector<std::int64_t> telling() {
  return {0,
          1,
          2,
          3,
          0b0110,
          0b1100,
          0xFF,
          -1,
          -2,
          std::numeric_limits<std::int64_t>::min(),
          std::numeric_limits<std::int64_t>::max()};
}

TEST(CellAttributes, AreEmptyByDefault) {
  EXPECT_TRUE(CellAttributes().isEmpty());
  EXPECT_EQ(CellAttributes().rawValue(), 0);
  EXPECT_EQ(raw(0), CellAttributes{});
  EXPECT_EQ(raw(0), CellAttributes(std::initializer_list<CellAttributes>{}));
  EXPECT_FALSE(raw(4).isEmpty());
}

TEST(CellAttributes, KeepEveryRawValue) {
  for (const std::int64_t value : telling()) {
    EXPECT_EQ(raw(value).rawValue(), value);
  }
}

TEST(CellAttributes, AreEqualExactlyIfTheRawValuesAre) {
  for (const std::int64_t a : telling()) {
    for (const std::int64_t b : telling()) {
      EXPECT_EQ(raw(a) == raw(b), a == b);
    }
  }
}

TEST(CellAttributes, OfAListAreTheUnionOfItsMembers) {
  const CellAttributes both{raw(1), raw(6)};
  EXPECT_EQ(both.rawValue(), 7);
  EXPECT_EQ((CellAttributes{CellAttributes::bold, CellAttributes::underline}),
            CellAttributes::bold.setUnion(CellAttributes::underline));
}

TEST(CellAttributes, FormSetsBitByBit) {
  for (const std::int64_t a : telling()) {
    for (const std::int64_t b : telling()) {
      EXPECT_EQ(raw(a).setUnion(raw(b)).rawValue(), a | b);
      EXPECT_EQ(raw(a).intersection(raw(b)).rawValue(), a & b);
      EXPECT_EQ(raw(a).symmetricDifference(raw(b)).rawValue(), a ^ b);
      EXPECT_EQ(raw(a).subtracting(raw(b)).rawValue(), a & ~b);
    }
  }
}

TEST(CellAttributes, FormSetsInPlaceAsTheyDoByValue) {
  for (const std::int64_t a : telling()) {
    for (const std::int64_t b : telling()) {
      CellAttributes set = raw(a);
      set.formUnion(raw(b));
      EXPECT_EQ(set, raw(a).setUnion(raw(b)));
      set = raw(a);
      set.formIntersection(raw(b));
      EXPECT_EQ(set, raw(a).intersection(raw(b)));
      set = raw(a);
      set.formSymmetricDifference(raw(b));
      EXPECT_EQ(set, raw(a).symmetricDifference(raw(b)));
      set = raw(a);
      set.subtract(raw(b));
      EXPECT_EQ(set, raw(a).subtracting(raw(b)));
    }
  }
}

TEST(CellAttributes, CompareAsSets) {
  for (const std::int64_t a : telling()) {
    for (const std::int64_t b : telling()) {
      EXPECT_EQ(raw(a).contains(raw(b)), (a & b) == b);
      EXPECT_EQ(raw(a).isSuperset(raw(b)), (a & b) == b);
      EXPECT_EQ(raw(a).isSubset(raw(b)), (a & b) == a);
      EXPECT_EQ(raw(a).isDisjoint(raw(b)), (a & b) == 0);
    }
  }
  EXPECT_TRUE(raw(0).isSubset(raw(0)));
  EXPECT_TRUE(raw(5).contains(raw(0)));
}

TEST(CellAttributes, InsertOnlyWhatIsNotYetSet) {
  CellAttributes set = raw(0b0011);
  EXPECT_EQ(set.insert(raw(0b0001)), std::pair(false, raw(0b0001)));
  EXPECT_EQ(set, raw(0b0011));
  EXPECT_EQ(set.insert(raw(0b0110)), std::pair(true, raw(0b0110)));
  EXPECT_EQ(set, raw(0b0111));
  EXPECT_EQ(set.insert(raw(0)), std::pair(false, raw(0)));
  EXPECT_EQ(set, raw(0b0111));
}

TEST(CellAttributes, RemoveAndReturnWhatWasSet) {
  CellAttributes set = raw(0b0011);
  EXPECT_EQ(set.remove(raw(0b0110)), raw(0b0010));
  EXPECT_EQ(set, raw(0b0001));
  EXPECT_EQ(set.remove(raw(0b0110)), std::nullopt);
  EXPECT_EQ(set, raw(0b0001));
}

TEST(CellAttributes, UpdateAndReturnWhatWasSet) {
  CellAttributes set = raw(0b0011);
  EXPECT_EQ(set.update(raw(0b0110)), raw(0b0010));
  EXPECT_EQ(set, raw(0b0111));
  EXPECT_EQ(set.update(raw(0b1000)), std::nullopt);
  EXPECT_EQ(set, raw(0b1111));
}

TEST(CellAttributes, NameMembersOfOneBitEach) {
  CellAttributes all;
  for (const CellAttributes member :
       {CellAttributes::bold, CellAttributes::dim, CellAttributes::italic, CellAttributes::underline,
        CellAttributes::blink, CellAttributes::reverse, CellAttributes::hidden, CellAttributes::strikethrough}) {
    EXPECT_EQ(member.rawValue() & (member.rawValue() - 1), 0);
    EXPECT_FALSE(member.isEmpty());
    EXPECT_TRUE(all.isDisjoint(member));
    all.formUnion(member);
  }
}

}  // namespace
}  // namespace zolt
