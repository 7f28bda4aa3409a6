// What scripts can do to windows, without the socket.
#include "app/WindowMessages.h"

#include <nlohmann/json.hpp>

#include "AppFixture.h"
#include "app/MessageIdentity.h"
#include "app/ProgramRun.h"

namespace zolt {
namespace {

using Json = nlohmann::json;
using test::waitFor;

class WindowMessagesTest : public test::AppDelegateTest {
 protected:
  void SetUp() override {
    defaults.setBool("fullEmulation", true);
    defaults.setString("startupShell", ZOLT_TEST_CHILD);  // prints its arguments and waits
  }

  Json ask(const Message& message) { return Json::parse(messages.answer(message)); }
  /// What an accepted message answers.
  Json done(const Message& message) {
    const Json answer = ask(message);
    EXPECT_EQ(answer["ok"], true) << answer;
    return answer;
  }
  std::string refusal(const Message& message) {
    const Json answer = ask(message);
    EXPECT_EQ(answer["ok"], false) << answer;
    return answer.value("error", "");
  }
  Json windows() { return done({.verb = Verb::List})["windows"]; }
  /// What is listed of a terminal, with its "tab" and "window".
  Json listed(const std::string& terminal) {
    for (const Json& window : windows()) {
      for (const Json& tab : window["tabs"]) {
        for (Json each : tab["terminals"]) {
          if (each["id"] != terminal) continue;
          each["tab"] = tab;
          each["window"] = window["id"];
          return each;
        }
      }
    }
    return {};
  }
  static TerminalTabs& tabsOf(TerminalWindow& window) {
    return static_cast<TerminalTabs&>(window.contentViewController().rootView().area());
  }
  static bool waitForScreen(TextCanvas& canvas, const std::string& text) {
    return waitFor([&] {
      canvas.makeFrameNow();
      return canvas.visibleText().toStdString().find(text) != std::string::npos;
    });
  }
  /// A program that prints what is typed, as it arrives.
  static std::vector<std::string> cat() { return {ZOLT_TEST_CHILD, "cat"}; }
  TerminalWindow& openActive() {
    TerminalWindow& window = delegate.openWindow(child({"wait"}));
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window, test::kPatience.count()));
    return window;
  }

  WindowMessages messages{delegate, config, defaults};
};

TEST_F(WindowMessagesTest, OpensAWindowInAFolderWithAName) {
  const std::string home = folder.path().toStdString();
  const Json answer =
      done({.verb = Verb::NewWindow, .workingDirectory = home, .title = "Build \n log", .program = {"sleep", "1000"}});
  ASSERT_EQ(delegate.windows().size(), 1U);
  const Json terminal = listed(answer["terminal"]);
  EXPECT_EQ(terminal["window"], answer["window"]);
  EXPECT_EQ(terminal["title"], "sleep");
  EXPECT_EQ(terminal["tab"]["title"], "Build log");
  EXPECT_TRUE(waitFor([&] { return listed(answer["terminal"])["folder"] == home; }));
}

TEST_F(WindowMessagesTest, RefusesAFolderThatIsNotThere) {
  EXPECT_EQ(refusal({.verb = Verb::NewWindow, .workingDirectory = "/not/there"}), "there is no folder /not/there");
  EXPECT_TRUE(delegate.windows().empty());
}

TEST_F(WindowMessagesTest, OpensATabBesideATerminal) {
  TerminalWindow& first = openActive();
  openActive();
  const std::string beside = windows()[0]["tabs"][0]["terminals"][0]["id"];
  const Json answer = done({.verb = Verb::NewTab, .terminal = beside, .title = "Mine"});
  EXPECT_EQ(tabsOf(first).count(), 2);
  EXPECT_EQ(listed(answer["terminal"])["tab"]["title"], "Mine");
  EXPECT_EQ(answer["window"], windows()[0]["id"]);
  done({.verb = Verb::NewTab, .window = windows()[0]["id"]});
  EXPECT_EQ(tabsOf(first).count(), 3);
}

TEST_F(WindowMessagesTest, ChoosesTheWindowWithTheKeyboardIfNoneIsNamed) {
  openActive();
  TerminalWindow& second = openActive();
  done({.verb = Verb::NewTab});
  EXPECT_EQ(tabsOf(second).count(), 2);
}

TEST_F(WindowMessagesTest, SplitsATerminalAndRunsAProgramThere) {
  TerminalWindow& window = openActive();
  const std::string first = windows()[0]["tabs"][0]["terminals"][0]["id"];
  const int rows = listed(first)["rows"];
  const Json below =
      done({.verb = Verb::Split, .side = "down", .terminal = first, .program = {ZOLT_TEST_CHILD, "wait"}});
  const Json right = done({.verb = Verb::Split, .terminal = first, .program = {ZOLT_TEST_CHILD, "wait"}});
  EXPECT_EQ(tabsOf(window).panes().size(), 3U);
  const Json whole = listed(first);
  EXPECT_LT(whole["rows"].get<int>(), rows);
  EXPECT_EQ(listed(right["terminal"])["rows"], whole["rows"]) << "beside it";
  EXPECT_GT(listed(below["terminal"])["columns"], whole["columns"]) << "below both";
  EXPECT_TRUE(waitForScreen(tabsOf(window).surface().canvas(), "waiting"));
}

TEST_F(WindowMessagesTest, RefusesASplitWithoutRoom) {
  openActive().resize(150, 150);
  std::string reason;
  for (int i = 0; i < 20 && reason.empty(); ++i) {
    const Json answer = ask({.verb = Verb::Split});
    reason = answer.value("error", "");
  }
  EXPECT_TRUE(reason.ends_with("has no room for a split")) << reason;
}

TEST_F(WindowMessagesTest, TypesNothingElseIntoAProgram) {
  defaults.setString("startupCommand", "startup");
  openActive();
  const Json answer = done({.verb = Verb::NewTab, .program = cat()});
  TerminalTabs& tabs = tabsOf(window(0));
  done({.verb = Verb::SendText, .terminal = answer["terminal"], .text = "hello\n", .token = answer["token"]});
  ASSERT_TRUE(waitForScreen(tabs.surface().canvas(), "hello"));
  // The startup command follows the first output.
  done({.verb = Verb::SendText, .terminal = answer["terminal"], .text = "again\n", .token = answer["token"]});
  ASSERT_TRUE(waitForScreen(tabs.surface().canvas(), "again"));
  EXPECT_FALSE(tabs.surface().canvas().visibleText().contains(QLatin1String("startup")));
}

TEST_F(WindowMessagesTest, TypesOnlyForTheHolderOfTheToken) {
  openActive();
  const Json opened = done({.verb = Verb::NewTab, .program = cat()});
  const Json other = done({.verb = Verb::NewTab, .program = cat()});
  Message message{.verb = Verb::SendText, .terminal = opened["terminal"], .text = "a\n"};
  EXPECT_EQ(refusal(message), "only the token of its opening allows to type into a terminal");
  message.token = other["token"];
  EXPECT_EQ(refusal(message), "the token is not that of terminal " + message.terminal);
  message.token = opened["token"];
  done(message);
  EXPECT_NE(opened["token"], other["token"]);
  EXPECT_EQ(opened["token"].get<std::string>().size(), 32U);
}

TEST_F(WindowMessagesTest, TypesIntoATerminalOfTheUsersOnlyWhereThatIsSet) {
  TerminalWindow& window = delegate.openWindow({.program = shellForProgram(cat())});
  const std::string terminal = windows()[0]["tabs"][0]["terminals"][0]["id"];
  const Message message{.verb = Verb::SendText, .terminal = terminal, .text = "hello\n"};
  refusal(message);
  defaults.setBool("messagesMayType", true);
  done(message);
  EXPECT_TRUE(waitForScreen(tabsOf(window).surface().canvas(), "hello"));
}

TEST_F(WindowMessagesTest, RefusesToTypeWhereNothingRuns) {
  defaults.setBool("closeWindowWhenShellExits", false);
  openActive();
  const Json answer = done({.verb = Verb::NewTab, .program = {"true"}});
  ASSERT_TRUE(waitForScreen(tabsOf(window(0)).surface().canvas(), "ended"));
  EXPECT_EQ(refusal({.verb = Verb::SendText, .terminal = answer["terminal"], .text = "a", .token = answer["token"]}),
            "nothing runs in terminal " + answer["terminal"].get<std::string>() + " any more");
}

TEST_F(WindowMessagesTest, NeverTellsATokenAgain) {
  openActive();
  const std::string token = done({.verb = Verb::NewTab})["token"];
  EXPECT_EQ(messages.answer({.verb = Verb::List}).find(token), std::string::npos);
  EXPECT_EQ(messages.answer({.verb = Verb::SendText, .terminal = "x", .text = "a", .token = token}).find(token),
            std::string::npos);
}

TEST_F(WindowMessagesTest, ListsWhatIsOnScreen) {
  EXPECT_TRUE(windows().empty());
  openActive();
  const Json tab = done({.verb = Verb::NewTab, .program = {"sh", "-ic", "sleep 1000; true"}});
  const Json all = windows();
  ASSERT_EQ(all.size(), 1U);
  EXPECT_EQ(all[0]["display"], "full");
  EXPECT_EQ(all[0]["focused"], true);
  ASSERT_EQ(all[0]["tabs"].size(), 2U);
  EXPECT_EQ(all[0]["tabs"][0]["current"], false);
  EXPECT_EQ(all[0]["tabs"][1]["current"], true);
  const Json& first = all[0]["tabs"][0]["terminals"][0];
  EXPECT_EQ(first["focused"], false);
  EXPECT_EQ(first["program"], nullptr);
  EXPECT_GT(first["rows"], 5);
  EXPECT_GT(first["columns"], 20);
  EXPECT_EQ(listed(tab["terminal"])["focused"], true);
  EXPECT_TRUE(waitFor([&] { return listed(tab["terminal"])["program"] == "sleep"; }));
}

TEST_F(WindowMessagesTest, KnowsATerminalByTheSameIdWhereverItGoes) {
  openActive();
  const Json tab = done({.verb = Verb::NewTab});
  const std::string window = tab["window"];
  EXPECT_EQ(listed(tab["terminal"])["window"], window);
  tabsOf(*delegate.windows().front()).moveTabToNewWindow();
  EXPECT_EQ(delegate.windows().size(), 2U);
  const Json moved = listed(tab["terminal"]);
  EXPECT_EQ(moved["id"], tab["terminal"]);
  EXPECT_NE(moved["window"], window);
}

TEST_F(WindowMessagesTest, BringsATerminalToTheFront) {
  TerminalWindow& first = openActive();
  const Json tab = done({.verb = Verb::NewTab});
  const std::string terminal = windows()[0]["tabs"][0]["terminals"][0]["id"];
  openActive();
  EXPECT_EQ(listed(terminal)["focused"], false);
  done({.verb = Verb::Focus, .terminal = terminal});
  EXPECT_TRUE(waitFor([&] { return listed(terminal)["focused"] == true; }));
  EXPECT_TRUE(first.isActiveWindow());
  EXPECT_EQ(tabsOf(first).currentIndex(), 0);
}

TEST_F(WindowMessagesTest, KnowsNothingOfWhatIsClosed) {
  TerminalWindow& window = openActive();
  const Json tab = done({.verb = Verb::NewTab});
  const std::string terminal = tab["terminal"];
  tabsOf(window).closeTab();
  for (const Verb verb : {Verb::Focus, Verb::NewTab, Verb::Split}) {
    EXPECT_EQ(refusal({.verb = verb, .terminal = terminal}), "there is no terminal " + terminal);
  }
  EXPECT_EQ(refusal({.verb = Verb::SendText, .terminal = terminal, .text = "a", .token = tab["token"]}),
            "there is no terminal " + terminal);
  window.close();
  EXPECT_EQ(refusal({.verb = Verb::Focus, .window = tab["window"]}),
            "there is no window " + tab["window"].get<std::string>());
  EXPECT_EQ(refusal({.verb = Verb::Focus}), "there is no window");
  EXPECT_EQ(refusal({.verb = Verb::NewTab}), "there is no window of the full emulation");
}

TEST_F(WindowMessagesTest, DoesInALogWhatALogCanDo) {
  delegate.setDisplayOfThisRun(Display::Log);
  EXPECT_EQ(refusal({.verb = Verb::NewWindow, .title = "a"}), "a window that shows a log has no title of its own");
  const Json answer = done({.verb = Verb::NewWindow, .program = cat()});
  const std::string window = answer["window"];
  const std::string logs = "window " + window + " shows a log, which has no tabs and no splits";
  EXPECT_EQ(refusal({.verb = Verb::NewTab, .terminal = answer["terminal"]}), logs);
  EXPECT_EQ(refusal({.verb = Verb::Split, .window = window}), logs);
  EXPECT_EQ(windows()[0]["display"], "log");
  EXPECT_EQ(listed(answer["terminal"])["window"], window);
  EXPECT_GT(listed(answer["terminal"])["rows"], 5);
  done({.verb = Verb::SendText, .terminal = answer["terminal"], .text = "hello\n", .token = answer["token"]});
  EXPECT_TRUE(waitForText(*delegate.windows().front(), "hello"));
  done({.verb = Verb::Focus, .terminal = answer["terminal"]});
  delegate.windows().front()->close();
  EXPECT_TRUE(windows().empty()) << "its shell runs on, but nobody can get at it";
  EXPECT_EQ(refusal({.verb = Verb::Focus, .window = window}), "there is no window " + window);
}

TEST_F(WindowMessagesTest, GivesAShellTheIdOfItsTerminalInTheFullEmulationOnly) {
  const std::vector<std::string> tell{"sh", "-c", "echo \"<$ZOLT_TERMINAL>\"; sleep 1000"};
  const Json full = done({.verb = Verb::NewWindow, .program = tell});
  EXPECT_TRUE(
      waitForScreen(tabsOf(window(0)).surface().canvas(), std::string("<").append(full["terminal"]).append(">")));
  delegate.setDisplayOfThisRun(Display::Log);
  done({.verb = Verb::NewWindow, .program = tell});
  EXPECT_TRUE(waitForText(window(1), "<>"));
}

}  // namespace
}  // namespace zolt
