#pragma once

#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/StoredString.h"
#include "session/TerminalController.h"
#include "view/LogSurface.h"
#include "view/SidebarSlot.h"
#include "view/TerminalArea.h"

namespace zolt {

/// The content of a terminal window: its terminals, on black, with the sidebar beside them and a footer below them
/// while these are shown.
///
/// Owns the terminals. The first is created when the view is first shown or the terminal is first requested. Reacts to
/// the notifications of Notifications.h; each of them reaches every window: all clear their terminal, all toggle their
/// sidebar. Main thread.
class ContentView : public QWidget {
  Q_OBJECT

 public:
  /// Creates a terminal's controller; the terminal has this size from the start.
  using MakeTerminal = std::function<std::unique_ptr<TerminalController>(const TerminalSize& size)>;

  /// `defaults` must outlive the view. Shows the log display.
  ContentView(MakeTerminal makeTerminal, UserDefaults& defaults, QWidget* parent = nullptr);
  /// Makes what the terminals are shown in, with the first terminal in it.
  using MakeArea = std::function<std::unique_ptr<TerminalArea>(const TerminalSize& size)>;
  ContentView(MakeArea makeArea, UserDefaults& defaults, QWidget* parent = nullptr);
  /// Uses the user's own settings.
  explicit ContentView(MakeTerminal makeTerminal, QWidget* parent = nullptr);
  ~ContentView() override;

  TerminalArea& area();
  /// The terminal that has the keyboard, or had it last.
  TerminalController& terminal() { return area().terminal(); }
  TerminalSurface& surface() { return area().surface(); }
  /// The view of the log display, which it must show.
  TerminalNSTextView& textView();
  /// Shows `footer` below the terminal, in place of an earlier one; null: none. The view owns it.
  void setFooter(std::unique_ptr<QWidget> footer);
  bool showsBrewSidebar() const { return m_sidebar->isRevealed(); }
  /// If the focus is in the sidebar, hiding it moves the focus to the terminal.
  void setShowsBrewSidebar(bool shown);
  /// The chosen theme's name, "Dark" unless stored otherwise. Drawing does not use it.
  std::string selectedTheme() const { return m_selectedTheme.value(); }

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::vector<QWidget*> panes() const;
  void updatePanes();
  void moveKeyboard();
  void ensureTerminal() { area(); }

  MakeArea m_makeArea;
  StoredString m_selectedTheme;
  SidebarSlot* m_sidebar;          // a child
  QVBoxLayout* m_column;           // beside it
  QShortcut* m_otherPane;          // a child, enabled while there is another pane
  QPointer<QWidget> m_footer;      // a child
  TerminalArea* m_area = nullptr;  // a child, once there is a terminal
};

}  // namespace zolt
