#include "brew/BrewOutput.h"

#include <gtest/gtest.h>

namespace zolt {
namespace {

using Type = BrewPackageType;

BrewPackage infoOf(const char* text, Type type = Type::Formula) {
  return packageOfInfo(QStringLiteral("wget"), type, QString::fromUtf8(text));
}

TEST(BrewOutput, IsTrimmed) {
  EXPECT_EQ(textOfBrewOutput(" \t\r\n a b \n c\xC2\xA0\n\n"), QStringLiteral("a b \n c"));
  EXPECT_EQ(textOfBrewOutput(""), QString());
  EXPECT_EQ(textOfBrewOutput("\n\n"), QString());
}

TEST(BrewOutput, IsNotTextIfAnyOfItIsNotUtf8) {
  EXPECT_EQ(textOfBrewOutput("good\ncaf\xE9\n"), std::nullopt);
  EXPECT_EQ(textOfBrewOutput("half \xE2\x82"), std::nullopt);
  EXPECT_EQ(textOfBrewOutput("caf\xC3\xA9"), QStringLiteral("café"));
}

TEST(BrewOutput, IsSplitIntoNonEmptyUntrimmedLines) {
  EXPECT_EQ(linesOf(QStringLiteral("a\n\n b \n\n\nc")),
            (QStringList{QStringLiteral("a"), QStringLiteral(" b "), QStringLiteral("c")}));
  EXPECT_TRUE(linesOf(QString()).isEmpty());
}

TEST(BrewInfo, HasTheRequestedNameAndType) {
  const BrewPackage package = infoOf("==> other: stable 9\nDesc: Retriever\n", Type::Cask);
  EXPECT_EQ(package.name, QStringLiteral("wget"));
  EXPECT_EQ(package.type, Type::Cask);
  EXPECT_FALSE(package.latestVersion);
}

TEST(BrewInfo, UsesTheFirstDescription) {
  EXPECT_EQ(infoOf("x\nDesc:  \t Internet file retriever \t\nDesc: another").description,
            QStringLiteral("Internet file retriever"));
  EXPECT_EQ(infoOf("Desc: ").description, QStringLiteral(""));
}

TEST(BrewInfo, RecognisesADescriptionOnlyByItsExactPrefix) {
  for (const char* text : {"desc: x", "Desc:x", " Desc: x", "Description: x", ""}) {
    EXPECT_EQ(infoOf(text).description, std::nullopt) << text;
  }
}

TEST(BrewInfo, TakesTheVersionFromTheLastWordOfTheFirstInstalledLine) {
  EXPECT_EQ(infoOf("Installed  (on request)   1.24.5  \nInstalled 2").installedVersion, QStringLiteral("1.24.5"));
  EXPECT_EQ(infoOf("Installed\t1.2").installedVersion, QStringLiteral("Installed\t1.2"));
  EXPECT_EQ(infoOf("Installed 1.2\t").installedVersion, QStringLiteral("1.2"));
}

TEST(BrewInfo, TakesTheWordInstalledAsTheVersionIfItIsAlone) {
  EXPECT_EQ(infoOf("Installed\n/opt/homebrew/Cellar/wget/1.24.5").installedVersion, QStringLiteral("Installed"));
}

TEST(BrewInfo, OmitsMissingParts) {
  const BrewPackage package = infoOf("==> wget: stable 1.24.5\nNot installed\n");
  EXPECT_EQ(package.description, std::nullopt);
  EXPECT_EQ(package.installedVersion, std::nullopt);
}

TEST(BrewSearch, TurnsEveryLineIntoAPackage) {
  const auto packages = packagesOfSearch(
      QStringLiteral("==> Formulae\nwget\nwget2\nhomebrew/cask/foo-app\nError: none\n homebrew/cask/x"));
  ASSERT_EQ(packages.size(), 6U);
  EXPECT_EQ(packages[0].name, QStringLiteral("==> Formulae"));
  EXPECT_EQ(packages[0].type, Type::Formula);
  EXPECT_EQ(packages[3].type, Type::Cask);
  EXPECT_EQ(packages[3].name, QStringLiteral("homebrew/cask/foo-app"));
  EXPECT_EQ(packages[5].type, Type::Formula) << "the line does not begin with it";
  for (const BrewPackage& package : packages) {
    EXPECT_FALSE(package.description || package.installedVersion || package.latestVersion);
  }
}

TEST(BrewPackages, OfTheSameLineHaveDifferentIds) {
  const auto one = packagesOfSearch(QStringLiteral("wget"));
  const auto other = packagesOfSearch(QStringLiteral("wget"));
  EXPECT_EQ(one[0].name, other[0].name);
  EXPECT_EQ(one[0].type, other[0].type);
  EXPECT_NE(one[0].id, other[0].id);
  EXPECT_FALSE(one[0].id.isNull());
}

}  // namespace
}  // namespace zolt
