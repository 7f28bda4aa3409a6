#include "app/WindowMessages.h"

#include <QApplication>
#include <algorithm>
#include <filesystem>

#include "app/MessageIdentity.h"
#include "app/ProgramRun.h"
#include "platform/ProcessFolder.h"
#include "platform/ProcessName.h"
#include "settings/EmulationSettings.h"

namespace zolt {

namespace {

bool isFull(const TerminalWindow& window) {
  return window.kind().display == Display::FullEmulation;
}

TerminalArea& areaOf(TerminalWindow& window) {
  return window.contentViewController().rootView().area();
}

TerminalTabs& tabsOf(TerminalWindow& window) {
  return static_cast<TerminalTabs&>(areaOf(window));
}

const std::string& idOf(QObject& terminalOrWindow) {
  return MessageIdentity::of(terminalOrWindow).id();
}

bool isFolder(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

std::optional<Shell> programOf(const Message& message) {
  return message.program.empty() ? std::nullopt : std::optional(shellForProgram(message.program));
}

TerminalTabs::Wanted wantedBy(const Message& message) {
  const std::string& folder = message.workingDirectory;
  return {.folder = folder.empty() ? std::nullopt : std::optional(folder), .program = programOf(message)};
}

QString nameFor(const Message& message) {
  return QString::fromStdString(message.title).simplified();
}

std::string opened(TerminalWindow& window, TerminalController& terminal) {
  return answerOpened(
      {.window = idOf(window), .terminal = idOf(terminal), .token = MessageIdentity::of(terminal).makeToken()});
}

std::string folderOf(TerminalController& terminal) {
  const auto shell = terminal.ptySession().shellProcess();
  return shell ? processFolder(*shell) : std::string();
}

std::optional<std::string> foregroundOf(TerminalController& terminal) {
  const auto program = terminal.ptySession().foregroundProgram();
  return program ? std::optional(processName(*program)) : std::nullopt;
}

ListedTerminal listed(TerminalController& terminal, TerminalSurface& surface, bool isFocused) {
  const TerminalSize& size = surface.canvas().gridSize();
  return {.id = idOf(terminal),
          .title = terminal.title(),
          .folder = folderOf(terminal),
          .rows = size.rows,
          .columns = size.columns,
          .isFocused = isFocused,
          .program = foregroundOf(terminal)};
}

std::vector<ListedTab> listedTabs(TerminalWindow& window) {
  TerminalTabs& tabs = tabsOf(window);
  std::vector<ListedTab> all;
  for (int index = 0; index < tabs.count(); ++index) {
    const bool isCurrent = index == tabs.currentIndex();
    ListedTab tab{.title = tabs.strip().title(index).toStdString(), .isCurrent = isCurrent, .terminals = {}};
    for (TerminalPane* pane : tabs.panesOf(index)) {
      EmulationSurface& surface = TerminalTabs::surfaceOf(*pane);
      const bool isFocused = isCurrent && window.isActiveWindow() && pane == &tabs.currentPane();
      ListedTerminal& terminal = tab.terminals.emplace_back(listed(pane->terminal(), surface, isFocused));
      if (const QString title = surface.title(); !title.isEmpty()) terminal.title = title.toStdString();
      terminal.folder = surface.folder();
    }
    all.push_back(std::move(tab));
  }
  return all;
}

ListedTab listedLog(TerminalWindow& window) {
  TerminalArea& area = areaOf(window);
  return {.title = window.windowTitle().toStdString(),
          .isCurrent = true,
          .terminals = {listed(area.terminal(), area.surface(), window.isActiveWindow())}};
}

}  // namespace

std::string WindowMessages::answer(const Message& message) {
  using Act = Result<std::string> (WindowMessages::*)(const Message&);
  struct Row {
    Verb verb;
    Act act;
  };
  static constexpr Row kActs[] = {
      {Verb::NewWindow, &WindowMessages::newWindow}, {Verb::NewTab, &WindowMessages::newTab},
      {Verb::Split, &WindowMessages::split},         {Verb::SendText, &WindowMessages::sendText},
      {Verb::List, &WindowMessages::list},           {Verb::Focus, &WindowMessages::focus}};
  if (const auto& folder = message.workingDirectory; !folder.empty() && !isFolder(folder)) {
    return answerRefused("there is no folder " + folder);
  }
  const auto done = (this->*std::ranges::find(kActs, message.verb, &Row::verb)->act)(message);
  return done ? done.value() : answerRefused(done.reason());
}

bool WindowMessages::isCurrent(const Place& place) {
  return &areaOf(*place.window).terminal() == place.terminal;
}

std::optional<WindowMessages::Place> WindowMessages::likeliest(const std::vector<Place>& places) {
  std::optional<Place> found;
  for (const Place& each : places) {
    if (isCurrent(each) && (!found || !found->window->isActiveWindow())) found = each;
  }
  return found;
}

std::vector<WindowMessages::Place> WindowMessages::places() const {
  std::vector<Place> all;
  for (const auto& window : m_delegate.windows()) {
    if (!window->isVisible()) continue;  // it is closed
    if (!isFull(*window)) {
      all.push_back({.window = window.get(), .terminal = &areaOf(*window).terminal()});
      continue;
    }
    for (TerminalPane* pane : tabsOf(*window).panes()) {
      all.push_back({.window = window.get(), .terminal = &pane->terminal(), .pane = pane});
    }
  }
  return all;
}

Result<WindowMessages::Place> WindowMessages::placeNamed(const Message& message) const {
  const bool isTerminal = !message.terminal.empty();
  const std::vector<Place> all = places();
  const auto found = std::ranges::find_if(all, [&](const Place& each) {
    return isTerminal ? idOf(*each.terminal) == message.terminal
                      : idOf(*each.window) == message.window && isCurrent(each);
  });
  if (found != all.end()) return *found;
  return Failure{isTerminal ? "there is no terminal " + message.terminal : "there is no window " + message.window};
}

Result<WindowMessages::Place> WindowMessages::placeFor(const Message& message) const {
  if (!message.terminal.empty() || !message.window.empty()) return placeNamed(message);
  const auto place = likeliest(places());
  if (!place) return Failure{"there is no window"};
  return *place;
}

Result<WindowMessages::Place> WindowMessages::fullPlaceFor(const Message& message) const {
  if (message.terminal.empty() && message.window.empty()) {
    std::vector<Place> all = places();
    std::erase_if(all, [](const Place& each) { return each.pane == nullptr; });
    const auto place = likeliest(all);
    if (!place) return Failure{"there is no window of the full emulation"};
    return *place;
  }
  auto place = placeNamed(message);
  if (place && place.value().pane == nullptr) {
    return Failure{"window " + idOf(*place.value().window) + " shows a log, which has no tabs and no splits"};
  }
  return place;
}

Result<std::string> WindowMessages::newWindow(const Message& message) {
  const bool isLog = m_delegate.displayOfNewWindow() == Display::Log;
  if (isLog && !message.title.empty()) return Failure{"a window that shows a log has no title of its own"};
  const bool isProgram = !message.program.empty();
  TerminalWindow& window = m_delegate.openWindow(
      {.restart = isProgram ? TerminalController::Restart::Never : TerminalController::Restart::AfterFailure,
       .workingDirectory = message.workingDirectory,
       .activationToken = message.activationToken,
       .program = programOf(message)});
  if (!message.title.empty()) tabsOf(window).setName(0, nameFor(message));
  return opened(window, areaOf(window).terminal());
}

Result<std::string> WindowMessages::newTab(const Message& message) {
  const auto place = fullPlaceFor(message);
  if (!place) return Failure{place.reason()};
  TerminalWindow& window = *place.value().window;
  TerminalTabs& tabs = tabsOf(window);
  TerminalPane* const pane = tabs.openTab(wantedBy(message));
  if (pane == nullptr) return Failure{"window " + idOf(window) + " has no tabs"};
  if (!message.title.empty()) tabs.setName(tabs.indexOf(*pane), nameFor(message));
  return opened(window, pane->terminal());
}

bool WindowMessages::addTab(const std::string& folder, const std::string& activationToken) {
  const auto place = fullPlaceFor({.verb = Verb::NewTab});
  if (!place || tabsOf(*place.value().window).openTab({.folder = folder}) == nullptr) return false;
  AppDelegate::bringToFront(*place.value().window, activationToken);
  return true;
}

Result<std::string> WindowMessages::split(const Message& message) {
  const auto place = fullPlaceFor(message);
  if (!place) return Failure{place.reason()};
  TerminalWindow& window = *place.value().window;
  const Direction side = message.side == "down" ? Direction::Down : Direction::Right;
  TerminalPane* const pane = tabsOf(window).openSplit(*place.value().pane, side, wantedBy(message));
  if (pane == nullptr) return Failure{"terminal " + idOf(*place.value().terminal) + " has no room for a split"};
  return opened(window, pane->terminal());
}

Result<std::string> WindowMessages::sendText(const Message& message) {
  const auto place = placeFor(message);
  if (!place) return Failure{place.reason()};
  TerminalController& terminal = *place.value().terminal;
  const bool mayType =
      MessageIdentity::of(terminal).hasToken(message.token) || emulationSettings(m_config, m_defaults).messagesMayType;
  if (!mayType) {
    return Failure{message.token.empty() ? "only the token of its opening allows to type into a terminal"
                                         : "the token is not that of terminal " + message.terminal};
  }
  if (!terminal.ptySession().isRunning()) return Failure{"nothing runs in terminal " + message.terminal + " any more"};
  terminal.sendInput(asTyped(message.text));
  return answerDone();
}

Result<std::string> WindowMessages::list(const Message&) {
  std::vector<ListedWindow> all;
  for (const auto& window : m_delegate.windows()) {
    if (!window->isVisible()) continue;
    all.push_back({.id = idOf(*window),
                   .title = window->windowTitle().toStdString(),
                   .display = isFull(*window) ? "full" : "log",
                   .isFocused = window->isActiveWindow(),
                   .tabs = isFull(*window) ? listedTabs(*window) : std::vector{listedLog(*window)}});
  }
  return answerListed(all);
}

Result<std::string> WindowMessages::focus(const Message& message) {
  const auto place = placeFor(message);
  if (!place) return Failure{place.reason()};
  TerminalWindow& window = *place.value().window;
  if (TerminalPane* pane = place.value().pane) tabsOf(window).bringUp(*pane);
  AppDelegate::bringToFront(window, message.activationToken);
  return answerDone();
}

}  // namespace zolt
