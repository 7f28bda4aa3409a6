#pragma once

#include <QPointer>
#include <QStackedLayout>
#include <QTimer>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "panes/PaneGrip.h"
#include "panes/SplitView.h"
#include "panes/TabStrip.h"
#include "view/EmulationSurface.h"
#include "view/TerminalArea.h"
#include "view/TerminalPane.h"

namespace zolt {

class DropMark;
class TypingBar;

/// A tab that is in no window just now: its panes, and the name that the user gave it.
struct DetachedTab {
  std::unique_ptr<SplitView> view;
  QString name;
  QPointer<TerminalPane> current;
};

/// A pane that is in no tab just now, and where it was.
struct DetachedPane {
  std::unique_ptr<TerminalPane> pane;
  QPointer<SplitView> from;
  PaneId id{};
  SplitLayout before;
};

/// Terminals of the full emulation in tabs, each of them split into panes. The strip of tabs is shown while there is
/// more than one, or the user wants it. Tabs and panes are moved as they are: the programs in them notice nothing but a
/// new size.
///
/// Performs the actions of the menus for tabs and panes. Closes nothing by itself: it says what the user wants closed.
/// All panes show an EmulationSurface. Main thread.
class TerminalTabs : public TerminalArea {
  Q_OBJECT

 public:
  struct NewPane {
    QSize area;                      ///< of its canvas, in logical pixels
    double scale;                    ///< device pixels to one of them
    std::string folder;              ///< the working directory; this process's if empty
    std::optional<Shell> program{};  ///< that runs instead of the user's shell
  };
  using MakePane = std::function<std::unique_ptr<TerminalPane>(const NewPane& wanted)>;

  /// An empty `makePane`: no terminal is ever added.
  TerminalTabs(std::unique_ptr<TerminalPane> first, MakePane makePane, QWidget* parent = nullptr);
  /// Without a tab, for one that is about to come.
  explicit TerminalTabs(MakePane makePane, QWidget* parent = nullptr);
  ~TerminalTabs() override;

  TerminalController& terminal() override { return currentPane().terminal(); }
  EmulationSurface& surface() override { return surfaceOf(currentPane()); }
  bool addTab() override;
  /// What a new terminal is like: where it starts, otherwise in the current one's folder; and what runs in it instead
  /// of the user's shell.
  struct Wanted {
    std::optional<std::string> folder{};
    std::optional<Shell> program{};
  };
  /// Shows one more terminal in a tab, or beside another; null if none may be added, or has room.
  TerminalPane* openTab(const Wanted& wanted);
  TerminalPane* openSplit(TerminalPane& beside, Direction side, const Wanted& wanted);
  void clear() override;
  void holdGridSize(bool held) override;

  int count() const { return static_cast<int>(m_tabs.size()); }
  int currentIndex() const { return m_strip->currentIndex(); }
  void setCurrentIndex(int index) { m_strip->turnTo(index); }
  TabStrip& strip() { return *m_strip; }
  SplitView& view(int index) { return *m_tabs[static_cast<std::size_t>(index)].view; }
  TerminalPane& currentPane() { return currentPaneOf(currentIndex()); }
  TerminalPane& currentPaneOf(int index) { return *tab(index).current; }
  std::vector<TerminalPane*> panes() const;
  std::vector<TerminalPane*> panesOf(int index) const;
  /// The tab that a pane is in; -1 if it is in none.
  int indexOf(const TerminalPane& pane) const;
  static EmulationSurface& surfaceOf(TerminalPane& pane) { return static_cast<EmulationSurface&>(pane.surface()); }

  /// Brings a pane into view and gives it the keyboard.
  void bringUp(TerminalPane& pane);
  /// Takes a tab out, with its programs running. The last one leaves the area empty.
  DetachedTab takeTab(int index);
  void insertTab(DetachedTab tab, int before);
  /// Names a tab as the user does; an empty name restores the program's title.
  void setName(int index, const QString& name);
  const QString& name(int index) const { return tab(index).name; }
  /// Takes a pane out of a tab that has others too.
  DetachedPane takePane(TerminalPane& pane);
  /// Puts it back where it was, if that is still there and has not changed; otherwise into a tab of its own.
  void putBack(DetachedPane pane);
  /// Splits `beside`, and puts `added` on that side of it.
  void splitWith(TerminalPane& beside, Direction side, std::unique_ptr<TerminalPane> added);
  /// The same with all panes of a tab, which stand to each other as they did in it.
  void splitWith(TerminalPane& beside, Direction side, DetachedTab added);

  /// How far the programs in all panes say they are.
  std::vector<TabProgress> progress() const;
  /// Marks a pane whose program has ended.
  void setExitStatus(TerminalPane& pane, int status);
  /// Whether panes without the keyboard are a little dimmed.
  void setDimsOthers(bool dims);
  /// Whether the strip is shown for one tab too.
  void setAlwaysShowsStrip(bool always);
  /// The title of the current tab: the name that the user gave it, or what its program calls itself; empty if neither.
  QString title() const;

  Q_INVOKABLE void nextTab() { turnTo(currentIndex() + 1); }
  Q_INVOKABLE void previousTab() { turnTo(currentIndex() - 1); }
  Q_INVOKABLE void moveTabForward() { moveTab(currentIndex() + 1); }
  Q_INVOKABLE void moveTabBackward() { moveTab(currentIndex() - 1); }
  Q_INVOKABLE void selectTab1() { select(1); }
  Q_INVOKABLE void selectTab2() { select(2); }
  Q_INVOKABLE void selectTab3() { select(3); }
  Q_INVOKABLE void selectTab4() { select(4); }
  Q_INVOKABLE void selectTab5() { select(5); }
  Q_INVOKABLE void selectTab6() { select(6); }
  Q_INVOKABLE void selectTab7() { select(7); }
  Q_INVOKABLE void selectTab8() { select(8); }
  /// The last one, however many there are.
  Q_INVOKABLE void selectLastTab() { select(count()); }
  Q_INVOKABLE void renameTab();
  Q_INVOKABLE void moveTabToNewWindow();
  Q_INVOKABLE void closePane();
  Q_INVOKABLE void closeTab();
  Q_INVOKABLE void splitRight() { split(Direction::Right); }
  Q_INVOKABLE void splitDown() { split(Direction::Down); }
  Q_INVOKABLE void goLeft() { go(Direction::Left); }
  Q_INVOKABLE void goRight() { go(Direction::Right); }
  Q_INVOKABLE void goUp() { go(Direction::Up); }
  Q_INVOKABLE void goDown() { go(Direction::Down); }
  Q_INVOKABLE void moveDividerLeft() { moveDivider(Direction::Left); }
  Q_INVOKABLE void moveDividerRight() { moveDivider(Direction::Right); }
  Q_INVOKABLE void moveDividerUp() { moveDivider(Direction::Up); }
  Q_INVOKABLE void moveDividerDown() { moveDivider(Direction::Down); }
  Q_INVOKABLE void equalisePanes();
  Q_INVOKABLE void zoomPane();
  Q_INVOKABLE void swapPanes();
  Q_INVOKABLE void movePaneToNewTab();
  /// Turns typing into all panes of the current tab on or off. A bar above them says that it is on; it ends when the
  /// tab has one pane left.
  Q_INVOKABLE void typeIntoAll();
  /// By the marks of the shell in the current pane.
  Q_INVOKABLE void previousPrompt() { surface().showPrompt(PromptDirection::Earlier); }
  Q_INVOKABLE void nextPrompt() { surface().showPrompt(PromptDirection::Later); }
  Q_INVOKABLE void selectCommandOutput() { surface().selectCommandOutput(); }
  Q_INVOKABLE void copyCommandOutput();
  Q_INVOKABLE void showHints() { surface().hints().toggle(); }
  Q_INVOKABLE void toggleCopyMode() { surface().copyMode().toggle(); }
  Q_INVOKABLE bool validate(const QByteArray& action) const;
  Q_INVOKABLE bool isOn(const QByteArray& action) const;

 Q_SIGNALS:
  /// `title()`, or the tab it is the title of, has changed.
  void titleChanged();
  /// Tabs or panes have come or gone, or another tab is in view: other actions may be available.
  void arrangementChanged();
  /// The theme of the terminals may have changed.
  void themeChanged();
  void bellRang();
  void progressChanged();
  /// A pane was made, or has come from another area; and one is about to leave this area.
  void paneAdded(zolt::TerminalPane* pane);
  void paneLeaving(zolt::TerminalPane* pane);
  void paneCloseWanted(zolt::TerminalPane* pane);
  void tabCloseWanted(int index);
  /// A tab should get a window of its own, at `at` if given.
  void windowWanted(int index, std::optional<QPoint> at);
  /// The last tab has left.
  void emptied();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  struct Tab {
    SplitView* view;  // a child
    QString name;
    QPointer<TerminalPane> current;
    bool typesIntoAll = false;
  };
  // What is known of a pane while it is here. The object is what its connections belong to.
  struct Watch {
    std::unique_ptr<QObject> connections;
    TabMarks marks;
    std::uint64_t bytesSeen = 0;
    std::string folder;                             // that it has told
    std::chrono::steady_clock::time_point resized;  // the last time
  };
  // Where a tab that is dragged over a pane would go; no side: a tab of this window.
  struct Target {
    TerminalPane* pane;
    std::optional<Direction> side;
  };

  static TerminalPane* toPane(QWidget* widget) { return static_cast<TerminalPane*>(widget); }
  Tab& tab(int index) { return m_tabs[static_cast<std::size_t>(index)]; }
  const Tab& tab(int index) const { return m_tabs[static_cast<std::size_t>(index)]; }
  Tab* tabOf(const TerminalPane& pane);
  void watch(TerminalPane& pane);
  void unwatch(TerminalPane& pane);
  void insert(SplitView* view, const QString& name, TerminalPane& current, int before);
  void setCurrent(TerminalPane& pane);
  void currentTabChanged(int index);
  void tabMoved(int from, int to);
  void updateStrip();
  void updateTitle(int index);
  static QString ownTitle(TerminalPane& pane);
  void updateMarks(int index);
  void updateDimming();
  void updateTyping(int index);
  void updateColors();
  void screenChanged(TerminalPane& pane);
  void turnTo(int index);
  void moveTab(int to);
  void select(int number);
  void split(Direction side);
  void go(Direction direction);
  void moveDivider(Direction direction);
  void prepareGrip();
  void pointerMoved(TerminalPane& pane, const QMouseEvent& event);
  /// Null: no pane.
  void offerGrip(TerminalPane* pane);
  void dragPaneOut();
  /// A pane of several in a tab of its own.
  DetachedTab tabOfPane(TerminalPane& pane);
  /// What is dragged, taken from where it was.
  static DetachedTab taken(const TabDrag& dragged);
  void takeIn(const TabDrag& dragged, int before);
  Target targetAt(QPoint point);
  void showMenu(int index, QPoint at);
  std::string folderOfCurrent();

  MakePane m_makePane;
  QWidget* m_bar;           // a child: the strip and a button
  TabStrip* m_strip;        // in it
  TypingBar* m_typingBar;   // a child
  QStackedLayout* m_stack;  // of the tabs' views
  std::vector<Tab> m_tabs;  // in the order of the strip
  std::map<TerminalPane*, Watch> m_watched;
  bool m_dimsOthers = true;
  bool m_alwaysShowsStrip = false;
  PaneGrip* m_grip;  // a child
  QTimer m_gripTimer;
  QPointer<TerminalPane> m_gripPane;  // that the grip is on, or soon will be
  DropMark* m_dropMark = nullptr;     // a child, while a tab is dragged over a pane
};

}  // namespace zolt
