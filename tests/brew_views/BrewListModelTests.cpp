#include "brew/views/BrewListModel.h"

#include <gtest/gtest.h>

namespace zolt {
namespace {

class BrewListModelTest : public testing::Test {
 protected:
  void SetUp() override {
    const auto make = [](const char* name, std::optional<QString> description) {
      return makeBrewPackage(QString::fromUtf8(name), std::move(description), std::nullopt, BrewPackageType::Formula);
    };
    model.setSections({{.header = QStringLiteral("One"),
                        .packages = {make("wget", QStringLiteral("Internet file retriever")), make("jq", std::nullopt)},
                        .type = std::nullopt},
                       {.header = QStringLiteral("Two"), .packages = {}, .type = std::nullopt}});
  }
  QModelIndex row(int number) { return model.index(number, 0); }
  QString tip(int number) { return row(number).data(Qt::ToolTipRole).toString(); }

  BrewListModel model;
};

TEST_F(BrewListModelTest, DescribesEachPackageInItsTooltip) {
  EXPECT_TRUE(tip(1).contains(QStringLiteral("wget")));
  EXPECT_TRUE(tip(1).contains(QStringLiteral("Internet file retriever")));
  EXPECT_TRUE(tip(2).contains(QStringLiteral("jq")));
  EXPECT_FALSE(tip(2).contains(QStringLiteral("retriever")));
}

TEST_F(BrewListModelTest, GivesAHeaderNoTooltip) {
  EXPECT_TRUE(row(0).data(Qt::ToolTipRole).isNull());
  EXPECT_TRUE(row(3).data(Qt::ToolTipRole).isNull());
}

TEST_F(BrewListModelTest, MakesPackagesButNotHeadersSelectable) {
  for (const int header : {0, 3}) {
    EXPECT_FALSE(row(header).flags() & (Qt::ItemIsSelectable | Qt::ItemIsEnabled)) << header;
  }
  for (const int package : {1, 2}) {
    EXPECT_EQ(row(package).flags() & (Qt::ItemIsSelectable | Qt::ItemIsEnabled),
              Qt::ItemIsSelectable | Qt::ItemIsEnabled)
        << package;
  }
}

}  // namespace
}  // namespace zolt
