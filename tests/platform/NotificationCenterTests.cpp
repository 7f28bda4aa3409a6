#include "platform/NotificationCenter.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zolt {
namespace {

class NotificationCenterTest : public testing::Test {
 protected:
  // An observer that records `mark`.
  void observe(const QObject* observer, const std::string& name, const std::string& mark) {
    center.addObserver(observer, name, [this, mark] { seen += mark; });
  }

  NotificationCenter center;
  QObject first;
  QObject second;
  std::string seen;
};

TEST_F(NotificationCenterTest, CallsTheObserversOfANameInTheOrderOfAddition) {
  observe(&first, "clear", "1");
  observe(&second, "clear", "2");
  observe(&first, "clear", "3");
  center.post("clear");
  EXPECT_EQ(seen, "123");
}

TEST_F(NotificationCenterTest, CallsNoObserverOfAnotherName) {
  observe(&first, "clear", "1");
  center.post("Clear");
  center.post("");
  EXPECT_EQ(seen, "");
}

TEST_F(NotificationCenterTest, CallsForEveryPost) {
  observe(&first, "clear", "1");
  center.post("clear");
  center.post("clear");
  EXPECT_EQ(seen, "11");
}

TEST_F(NotificationCenterTest, ForgetsAnObserverThatIsGone) {
  auto gone = std::make_unique<QObject>();
  observe(gone.get(), "clear", "x");
  observe(&first, "clear", "1");
  gone.reset();
  center.post("clear");
  EXPECT_EQ(seen, "1");
}

TEST_F(NotificationCenterTest, NoLongerCallsARemovedObserver) {
  observe(&first, "clear", "1");
  observe(&first, "toggle", "t");
  observe(&second, "clear", "2");
  center.removeObserver(&first);
  center.post("clear");
  center.post("toggle");
  EXPECT_EQ(seen, "2");
}

TEST_F(NotificationCenterTest, SkipsAnObserverThatAnEarlierHandlerDestroyed) {
  auto victim = std::make_unique<QObject>();
  center.addObserver(&first, "clear", [&] { victim.reset(); });
  observe(victim.get(), "clear", "x");
  center.post("clear");
  EXPECT_EQ(seen, "");
}

TEST_F(NotificationCenterTest, SkipsAnObserverThatAnEarlierHandlerRemoved) {
  center.addObserver(&first, "clear", [&] { center.removeObserver(&second); });
  observe(&second, "clear", "x");
  center.post("clear");
  EXPECT_EQ(seen, "");
}

TEST_F(NotificationCenterTest, LetsAHandlerAddAnObserverForTheNextPost) {
  center.addObserver(&first, "clear", [&] { observe(&second, "clear", "new "); });
  center.post("clear");
  EXPECT_EQ(seen, "");
  center.post("clear");
  EXPECT_EQ(seen, "new ");
}

TEST(NotificationCenter, OffersOneDefaultCenter) {
  EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}

}  // namespace
}  // namespace zolt
