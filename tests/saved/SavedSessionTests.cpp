// A session's windows as bytes, and back.
#include "saved/SavedSession.h"

#include <gtest/gtest.h>

#include <limits>
#include <nlohmann/json.hpp>
#include <random>

namespace zolt {
namespace {

using Json = nlohmann::json;

constexpr TerminalSize kSize{.rows = 30, .columns = 100, .pixelWidth = 900, .pixelHeight = 540};

// Three panes: one at the left, two at the right, one above the other.
SavedTab splitTab() {
  return {.name = "日本",
          .panes = {{.file = "a.terminal", .folder = "/tmp", .size = kSize, .zoom = -2},
                    {.file = "b.terminal", .folder = "/", .size = kSize},
                    {.file = "c.terminal", .folder = "", .size = kSize, .zoom = 1.5}},
          .layout = {.parts = {{.pane = 0, .share = 0.25},
                               {.isStacked = true,
                                .share = 0.75,
                                .parts = {{.pane = 1, .share = 0.5}, {.pane = 2, .share = 0.5}}}}},
          .current = 2,
          .isZoomed = true};
}
SavedTab plainTab() {
  return {.panes = {{.file = "d.terminal", .size = kSize}}, .layout = sideBySide(1)};
}
SavedSession session() {
  return {.time = 1'700'000'000,
          .windows = {{.x = -10, .y = 20, .width = 900, .height = 600, .tabs = {plainTab(), splitTab()}, .current = 1},
                      {.width = 500, .height = 300, .isMaximized = true, .tabs = {plainTab()}},
                      {.isFullScreen = true, .tabs = {plainTab()}}}};
}

// The session after a change to its bytes.
template <class Change>
SavedSession changed(Change change) {
  Json json = Json::parse(encodedSession(session()));
  change(json);
  return decodedSession(json.dump()).value();
}

TEST(SavedSessionTest, ComesBackAsItWas) {
  EXPECT_EQ(decodedSession(encodedSession(session())), session());
  EXPECT_EQ(decodedSession(encodedSession({})), SavedSession());
}

TEST(SavedSessionTest, IsNothingInOtherBytes) {
  for (const char* bytes : {"", "x", "[]", "7", "{}", R"({"version":2,"windows":[]})", R"({"version":"1"})"}) {
    EXPECT_FALSE(decodedSession(bytes)) << bytes;
  }
}

TEST(SavedSessionTest, LeavesOutWindowsAndTabsWithNothingInThem) {
  const SavedSession found = changed([](Json& json) {
    json["windows"][0]["tabs"][0]["panes"] = Json::array();
    json["windows"][1]["tabs"] = Json::array();
  });
  ASSERT_EQ(found.windows.size(), 2U);
  EXPECT_EQ(found.windows[0].tabs, std::vector{splitTab()});
  EXPECT_EQ(found.windows[0].current, 0U);
}

TEST(SavedSessionTest, PutsPanesSideBySideWhoseLayoutIsWrong) {
  const Json pane0{{"pane", 0}, {"share", 1}};
  const Json pane1{{"pane", 1}, {"share", 1}};
  for (const Json& layout : {
           Json(), Json(7), Json{{"pane", 0}},                                        // not all
           Json{{"parts", {pane0, pane1, pane1}}},                                    // one twice
           Json{{"parts", {pane0, pane1, Json{{"pane", 3}}}}},                        // one that is not there
           Json{{"parts", {pane0, pane1, Json{{"pane", -1}}}}},                       //
           Json{{"parts", {pane0, pane1, Json{{"pane", 2}, {"share", 0}}}}},          // one without room
           Json{{"parts", {pane0, pane1, Json{{"parts", Json{Json{{"pane", 2}}}}}}}}  // a split of one
       }) {
    const SavedSession found = changed([&](Json& json) { json["windows"][0]["tabs"][1]["layout"] = layout; });
    const SavedTab& tab = found.windows[0].tabs[1];
    EXPECT_EQ(tab.panes, splitTab().panes) << layout;
    EXPECT_EQ(tab.layout, sideBySide(3)) << layout;
  }
}

TEST(SavedSessionTest, TakesTheDefaultForEveryMemberThatIsWrong) {
  const SavedSession found = changed([](Json& json) {
    Json& window = json["windows"][0];
    window["x"] = "left";
    window["width"] = 1e300;
    window["height"] = std::numeric_limits<std::int64_t>::max();
    window["maximized"] = 1;
    window["current"] = 2;
    Json& pane = window["tabs"][1]["panes"][0];
    pane["folder"] = 5;
    pane["zoom"] = 1e9;
    pane["rows"] = 0;
    window["tabs"][1]["panes"][1]["columns"] = 70'000;
    window["tabs"][1]["current"] = 3;
  });
  const SavedWindow& window = found.windows[0];
  EXPECT_EQ(window.x, 0);
  EXPECT_EQ(window.y, 20);
  EXPECT_EQ(window.width, 0);
  EXPECT_EQ(window.height, 0);
  EXPECT_FALSE(window.isMaximized);
  EXPECT_EQ(window.current, 0U);
  EXPECT_EQ(window.tabs[1].current, 0U);
  EXPECT_EQ(window.tabs[1].panes[0], (SavedPane{.file = "a.terminal", .folder = "", .size = {}, .zoom = 1000}));
  EXPECT_EQ(window.tabs[1].panes[1].size, TerminalSize());
}

TEST(SavedSessionTest, NamesNoFileOutsideOfItsFolder) {
  for (const char* name : {"../a.terminal", "/etc/passwd", "..", ".hidden"}) {
    const SavedSession found = changed([&](Json& json) { json["windows"][0]["tabs"][0]["panes"][0]["file"] = name; });
    EXPECT_EQ(found.windows[0].tabs[0].panes[0].file, "") << name;
  }
}

TEST(SavedSessionTest, HasAtMostAThousandPanes) {
  const SavedSession found = changed([](Json& json) {
    Json& tabs = json["windows"][1]["tabs"];
    for (int i = 0; i < 2000; ++i) {
      tabs.push_back(tabs[0]);
    }
  });
  EXPECT_EQ(found.windows.size(), 2U);
  EXPECT_EQ(found.windows[0].tabs.size() + found.windows[1].tabs.size(), 1000U - 2U);  // one tab has three
}

TEST(SavedSessionTest, SurvivesNestingWithoutEnd) {
  std::string layout;
  for (int i = 0; i < 100'000; ++i) {
    layout += R"({"parts":[)";
  }
  layout += R"({"pane":0})";
  for (int i = 0; i < 100'000; ++i) {
    layout += "]}";
  }
  const auto found =
      decodedSession(R"({"version":1,"windows":[{"tabs":[{"panes":[{"file":"a"}],"layout":)" + layout + "}]}]}");
  ASSERT_TRUE(found);
  EXPECT_EQ(found->windows[0].tabs[0].layout, sideBySide(1));
}

TEST(SavedSessionTest, IsReadOrRefusedWhateverBytesAreChanged) {
  const std::string good = encodedSession(session());
  std::mt19937 random(7);
  int read = 0;
  for (int round = 0; round < 3000; ++round) {
    std::string bytes = good;
    for (int i = 0; i < 3; ++i) {
      bytes[random() % bytes.size()] = static_cast<char>(random() % 128);
    }
    const auto found = decodedSession(bytes);
    if (!found) continue;
    ++read;
    // What is put right stays so.
    EXPECT_EQ(decodedSession(encodedSession(*found)), found);
  }
  EXPECT_GT(read, 100);
}

}  // namespace
}  // namespace zolt
