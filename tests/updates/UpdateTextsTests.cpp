#include "updates/views/UpdateTexts.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace zolt {
namespace {

TEST(UpdateTexts, BytesAreShownInUnitsOfAThousand) {
  const std::pair<std::int64_t, const char*> cases[] = {
      {0, "0 bytes"},         {999, "999 bytes"},    {1000, "1.0 kB"},
      {9949, "9.9 kB"},       {9950, "10 kB"},       {999499, "999 kB"},
      {999500, "1.0 MB"},     {3100000, "3.1 MB"},   {12000000, "12 MB"},
      {1073741824, "1.1 GB"}, {999999999, "1.0 GB"}, {std::numeric_limits<std::int64_t>::max(), "9223372 TB"},
  };
  for (const auto& [bytes, text] : cases) {
    EXPECT_EQ(byteText(bytes).toStdString(), text) << bytes;
  }
}

TEST(UpdateTexts, ADownloadOfUnknownLengthShowsTheBytesReceived) {
  EXPECT_EQ(progressText(3100000, 12000000), QStringLiteral("3.1 MB of 12 MB"));
  EXPECT_EQ(progressText(3100000, 0), QStringLiteral("3.1 MB"));
}

TEST(UpdateTexts, TheOfferNamesBothVersions) {
  AppcastItem item;
  item.version = QStringLiteral("120");
  item.shortVersion = QStringLiteral("1.2");
  EXPECT_EQ(offerText(item, QStringLiteral("1.0")),
            QStringLiteral("Zolt 1.2 is now available; you have 1.0. Would you like to download it now?"));
  EXPECT_TRUE(offerText(item, QStringLiteral("1.2"))
                  .startsWith(QLatin1String("Zolt 1.2 (120) is now available; you have 1.2.")));
  item.shortVersion = QStringLiteral("%2");
  EXPECT_TRUE(
      offerText(item, QStringLiteral("1.0")).startsWith(QLatin1String("Zolt %2 is now available; you have 1.0.")));
}

}  // namespace
}  // namespace zolt
